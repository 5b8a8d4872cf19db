#include "NumberField.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

bool isDigit(QChar character) { return character >= u'0' && character <= u'9'; }

/// Characters that may be typed between the numbers of a time or a date.
bool isSeparator(QChar character) { return u"/:.,- "_s.contains(character); }

} // namespace

NumberField::NumberField(const QList<Field>& fields, QChar separator, QWidget* parent)
    : QSpinBox(parent), m_numbers(fields, separator)
{
    // Not by the wheel: without the focus it scrolls the area around this control.
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    lineEdit()->setAcceptDrops(false);
    lineEdit()->installEventFilter(this);
    QList<int> lowest;
    for (const Field& field : fields)
        lowest.append(field.minimum);
    setValues(lowest);
    connect(lineEdit(), &QLineEdit::textChanged, this, &NumberField::takeTextFromOutside);
    connect(this, &QSpinBox::valueChanged, this, &NumberField::takeTextFromOutside);
}

void NumberField::setValue(int field, int value)
{
    QList<int> values = m_numbers.valuesOf(text());
    values[field] = value;
    setValues(values);
}

void NumberField::setValues(const QList<int>& values)
{
    m_typed.clear();
    showValues(values);
}

void NumberField::setFieldFocus(int field, Qt::FocusReason reason)
{
    setFocus(reason);
    moveTo(field);
}

void NumberField::setTextColour(const QColor& colour)
{
    QPalette changed;
    if (colour.isValid())
        changed.setColor(QPalette::Text, colour);
    setPalette(changed);
}

void NumberField::stepBy(int steps)
{
    setValue(m_current, clamped(m_current, value(m_current) + steps));
}

bool NumberField::event(QEvent* event)
{
    if (event->type() != QEvent::InputMethod)
        return QSpinBox::event(event);
    type(static_cast<QInputMethodEvent*>(event)->commitString());
    return true;
}

bool NumberField::eventFilter(QObject* watched, QEvent* event)
{
    // A click moves the cursor into a number. The mouse selects neither a part of a number nor
    // several.
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        const auto* press = static_cast<QMouseEvent*>(event);
        const int position = lineEdit()->cursorPositionAt(press->position().toPoint());
        if (press->button() == Qt::LeftButton)
            moveTo(static_cast<int>(text().first(position).count(m_numbers.separator())));
        return true;
    }
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove: return true;
    default: return QSpinBox::eventFilter(watched, event);
    }
}

bool NumberField::focusNextPrevChild(bool next)
{
    const int target = m_current + (next ? 1 : -1);
    if (!hasFocus() || target < 0 || target > m_numbers.lastField())
        return QSpinBox::focusNextPrevChild(next);
    moveTo(target);
    return true;
}

void NumberField::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu->addAction(u"&Copiar"_s), &QAction::triggered, this, [this] { copy(); });
    connect(menu->addAction(u"&Pegar"_s), &QAction::triggered, this, [this] { paste(); });
    menu->popup(event->globalPos());
}

void NumberField::focusInEvent(QFocusEvent* event)
{
    QSpinBox::focusInEvent(event);
    switch (event->reason()) {
    case Qt::TabFocusReason:
    case Qt::ShortcutFocusReason: return moveTo(0);
    case Qt::BacktabFocusReason: return moveTo(m_numbers.lastField());
    default: return moveTo(m_current);
    }
}

void NumberField::keyPressEvent(QKeyEvent* event)
{
    const bool isCommand = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    if (event->matches(QKeySequence::Copy) || event->matches(QKeySequence::Cut))
        copy();
    else if (event->matches(QKeySequence::Paste))
        paste();
    else if (isCommand)
        event->ignore();
    else if (!pressEditingKey(*event)) {
        if (event->text().isEmpty() || !event->text().front().isPrint())
            event->ignore();
        else
            type(event->text());
    }
}

void NumberField::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QSpinBox::wheelEvent(event);
    else
        event->ignore();
}

QString NumberField::textFromValue(int value) const
{
    QList<int> values = m_numbers.valuesOf(text());
    // While a value outside the range is shown, the spin box has a wider range.
    if (values[m_current] != value)
        values[m_current] = clamped(m_current, value);
    return m_numbers.textOf(values);
}

int NumberField::valueFromText(const QString& text) const
{
    return m_numbers.valuesOf(text).at(m_current);
}

QValidator::State NumberField::validate(QString& text, int& /*position*/) const
{
    // A text from outside is corrected at once: nothing is shown that is not kept.
    if (text != m_told)
        text = m_numbers.textOf(m_numbers.corrected(text, m_numbers.valuesOf(m_told)));
    return QValidator::Acceptable;
}

bool NumberField::pressEditingKey(QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: QSpinBox::keyPressEvent(&event); return true;
    case Qt::Key_Left:
        event.setAccepted(m_current > 0);
        moveTo(m_current - 1);
        return true;
    case Qt::Key_Right:
        event.setAccepted(m_current < m_numbers.lastField());
        moveTo(m_current + 1);
        return true;
    case Qt::Key_Home: moveTo(0); return true;
    case Qt::Key_End: moveTo(m_numbers.lastField()); return true;
    case Qt::Key_Backspace: dropDigit(); return true;
    case Qt::Key_Delete: setValue(m_current, clamped(m_current, 0)); return true;
    default: return false;
    }
}

void NumberField::type(const QString& text)
{
    QList<int> values = m_numbers.valuesOf(this->text());
    for (const QChar character : QStringView(text).left(NumberText::longestText)) {
        if (isDigit(character))
            typeDigit(character, values);
        else if (isSeparator(character) && !m_typed.isEmpty())
            enter(m_current + 1);
    }
    showValues(values);
}

void NumberField::typeDigit(QChar digit, QList<int>& values)
{
    m_typed += digit;
    const int number = m_typed.toInt();
    values[m_current] = clamped(m_current, number);
    if (m_typed.size() == m_numbers.digits(m_current) ||
        number * 10 > m_numbers.field(m_current).maximum)
        enter(m_current + 1);
}

void NumberField::dropDigit()
{
    QList<int> values = m_numbers.valuesOf(text());
    if (m_typed.isEmpty())
        m_typed = QString::number(values[m_current]);
    m_typed.chop(1);
    values[m_current] = clamped(m_current, m_typed.toInt());
    showValues(values);
}

// Copies all numbers, although only one is selected: a date is of use only as a whole.
void NumberField::copy() const { QGuiApplication::clipboard()->setText(text()); }

void NumberField::paste()
{
    setValues(m_numbers.pasted(QGuiApplication::clipboard()->text(), m_numbers.valuesOf(text()),
                               m_current));
}

void NumberField::enter(int field)
{
    m_current = std::clamp(field, 0, m_numbers.lastField());
    m_typed.clear();
}

void NumberField::moveTo(int field)
{
    enter(field);
    showValues(m_numbers.valuesOf(text()));
}

void NumberField::showValues(const QList<int>& values)
{
    const QList<int> before = m_numbers.valuesOf(m_told);
    m_told = m_numbers.textOf(values);
    const Field& field = m_numbers.field(m_current);
    const int value = values[m_current];
    const int lowest = std::min(field.minimum, value);
    const int highest = std::max(field.maximum, value);
    // setRange would limit the previous number to the new range, and release a pressed button.
    const bool isNewRange = lowest != minimum() || highest != maximum();
    if (isNewRange)
        setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    lineEdit()->setText(m_told);
    QSpinBox::setValue(value);
    if (isNewRange)
        setRange(lowest, highest);
    if (!field.accessibleName.isEmpty() && field.accessibleName != accessibleName())
        setAccessibleName(field.accessibleName);
    if (hasFocus()) {
        const qsizetype start =
            m_current == 0 ? 0 : m_numbers.textOf(values.first(m_current)).size() + 1;
        const qsizetype end = m_numbers.textOf(values.first(m_current + 1)).size();
        lineEdit()->setSelection(static_cast<int>(start), static_cast<int>(end - start));
    }
    if (values != before)
        emit valuesChanged();
}

void NumberField::takeTextFromOutside()
{
    if (text() != m_told)
        setValues(m_numbers.valuesOf(text()));
}
