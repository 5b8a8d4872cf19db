#include "NumberField.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

bool isDigit(QChar character) { return character >= u'0' && character <= u'9'; }

/// Characters that may be typed between the numbers of a time or a date.
bool isSeparator(QChar character) { return u"/:.,- "_s.contains(character); }

QStringList numbersIn(const QString& text)
{
    static const QRegularExpression others(u"[^0-9]+"_s);
    return text.left(NumberField::longestText).split(others, Qt::SkipEmptyParts);
}

} // namespace

NumberField::NumberField(const QList<Field>& fields, QChar separator, QWidget* parent)
    : QSpinBox(parent), m_fields(fields), m_separator(separator)
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
    QList<int> values = valuesOf(text());
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

int NumberField::clamped(int field, int value) const
{
    return std::clamp(value, m_fields[field].minimum, m_fields[field].maximum);
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
            moveTo(static_cast<int>(text().first(position).count(m_separator)));
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
    if (!hasFocus() || target < 0 || target > lastField())
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
    case Qt::BacktabFocusReason: return moveTo(lastField());
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
    QList<int> values = valuesOf(text());
    // While a value outside the range is shown, the spin box has a wider range.
    if (values[m_current] != value)
        values[m_current] = clamped(m_current, value);
    return textOf(values);
}

int NumberField::valueFromText(const QString& text) const { return valuesOf(text).at(m_current); }

QValidator::State NumberField::validate(QString& text, int& /*position*/) const
{
    // A text from outside is corrected at once: nothing is shown that is not kept.
    if (text != m_told)
        text = textOf(corrected(text));
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
        event.setAccepted(m_current < lastField());
        moveTo(m_current + 1);
        return true;
    case Qt::Key_Home: moveTo(0); return true;
    case Qt::Key_End: moveTo(lastField()); return true;
    case Qt::Key_Backspace: dropDigit(); return true;
    case Qt::Key_Delete: setValue(m_current, clamped(m_current, 0)); return true;
    default: return false;
    }
}

void NumberField::type(const QString& text)
{
    QList<int> values = valuesOf(this->text());
    for (const QChar character : QStringView(text).left(longestText)) {
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
    if (m_typed.size() == digits(m_current) || number * 10 > m_fields[m_current].maximum)
        enter(m_current + 1);
}

void NumberField::dropDigit()
{
    QList<int> values = valuesOf(text());
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
    const QString pasted = QGuiApplication::clipboard()->text();
    const bool isWhole = numbersIn(pasted).size() > lastField();
    setValues(taken(pasted, valuesOf(text()), isWhole ? 0 : m_current));
}

QList<int> NumberField::taken(const QString& text, QList<int> values, int field) const
{
    QStringList numbers = numbersIn(text);
    // A whole time may be written without a separator.
    if (numbers.size() == 1 && numbers.first().size() > digits(field)) {
        QString rest = numbers.takeFirst();
        for (field = 0; field <= lastField(); ++field) {
            numbers.append(rest.left(digits(field)));
            rest.remove(0, digits(field));
        }
        numbers.removeAll(QString());
        field = 0;
    }
    for (qsizetype i = 0; i < numbers.size() && field <= lastField(); ++i, ++field)
        values[field] = clamped(field, numbers[i].left(digits(field)).toInt());
    return values;
}

QList<int> NumberField::corrected(const QString& text) const
{
    QStringList numbers = text.left(longestText).split(m_separator);
    // A number that was deleted becomes the minimum.
    if (numbers.size() == m_fields.size())
        numbers.replaceInStrings(QRegularExpression(u"^$"_s), u"0"_s);
    return taken(numbers.join(m_separator), valuesOf(m_told), 0);
}

void NumberField::enter(int field)
{
    m_current = std::clamp(field, 0, lastField());
    m_typed.clear();
}

void NumberField::moveTo(int field)
{
    enter(field);
    showValues(valuesOf(text()));
}

void NumberField::showValues(const QList<int>& values)
{
    const QList<int> before = valuesOf(m_told);
    m_told = textOf(values);
    const Field& field = m_fields[m_current];
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
        const qsizetype start = m_current == 0 ? 0 : textOf(values.first(m_current)).size() + 1;
        const qsizetype end = textOf(values.first(m_current + 1)).size();
        lineEdit()->setSelection(static_cast<int>(start), static_cast<int>(end - start));
    }
    if (values != before)
        emit valuesChanged();
}

void NumberField::takeTextFromOutside()
{
    if (text() != m_told)
        setValues(valuesOf(text()));
}

QList<int> NumberField::valuesOf(const QString& text) const
{
    const QStringList numbers = text.split(m_separator);
    QList<int> values;
    for (int field = 0; field <= lastField(); ++field)
        values.append(numbers.value(field).toInt());
    return values;
}

QString NumberField::textOf(const QList<int>& values) const
{
    QStringList numbers;
    for (int field = 0; field < values.size(); ++field)
        numbers.append(u"%1"_s.arg(values[field], m_fields[field].width, 10, QChar(u'0')));
    return numbers.join(m_separator);
}
