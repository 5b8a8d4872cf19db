#include "TextoRestrinxido.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QStyleOptionFrame>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int wheelNotch = 120;

bool isDigit(QChar character) { return character >= u'0' && character <= u'9'; }

int countNumbers(const QString& text)
{
    int count = 0;
    for (qsizetype i = 0; i < text.size(); ++i)
        if (isDigit(text[i]) && (i == 0 || !isDigit(text[i - 1])))
            ++count;
    return count;
}

} // namespace

TextoRestrinxido::TextoRestrinxido(const QList<SubField>& subFields, QChar separator,
                                   QWidget* parent)
    : QLineEdit(parent), m_subFields(subFields), m_separator(separator)
{
    for (const SubField& subField : m_subFields)
        m_values.append(subField.minimum);
    m_announced = m_values;
    setAcceptDrops(false);
    setInputMethodHints(Qt::ImhPreferNumbers);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // Whatever way a text takes in (an assistive program, for instance), it is filtered.
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (m_rendering)
            return;
        moveTo(0);
        takeText(text);
        commit();
    });
    commit();
}

void TextoRestrinxido::setValue(int index, int value)
{
    m_values[index] = clamped(index, value);
    m_typedDigits = 0;
    commit();
}

void TextoRestrinxido::setTextColour(const QColor& colour)
{
    QPalette changed = palette();
    changed.setColor(QPalette::Text, colour);
    setPalette(changed);
}

void TextoRestrinxido::resetTextColour() { setPalette(QPalette()); }

QColor TextoRestrinxido::textColour() const { return palette().color(QPalette::Text); }

QSize TextoRestrinxido::sizeHint() const
{
    QString widest = shownText();
    std::replace_if(widest.begin(), widest.end(), isDigit, u'0');
    // Two digits' width more leaves room for the cursor and the margins within the frame.
    const int width = fontMetrics().horizontalAdvance(widest + u"00"_s);
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QSize framed =
        style()->sizeFromContents(QStyle::CT_LineEdit, &option, QSize(width, 0), this);
    return {framed.width(), QLineEdit::sizeHint().height()};
}

bool TextoRestrinxido::focusNextPrevChild(bool next)
{
    const int target = m_current + (next ? 1 : -1);
    if (!hasFocus() || target < 0 || target >= subFieldCount())
        return QLineEdit::focusNextPrevChild(next);
    moveTo(target);
    selectCurrent();
    return true;
}

void TextoRestrinxido::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu->addAction(u"&Copiar"_s), &QAction::triggered, this, [this] { copyAll(); });
    connect(menu->addAction(u"&Pegar"_s), &QAction::triggered, this, [this] { takePaste(); });
    menu->popup(event->globalPos());
}

void TextoRestrinxido::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::ShortcutFocusReason)
        moveTo(0);
    else if (event->reason() == Qt::BacktabFocusReason)
        moveTo(subFieldCount() - 1);
    selectCurrent();
}

void TextoRestrinxido::inputMethodEvent(QInputMethodEvent* event)
{
    takeText(event->commitString());
    commit();
    event->accept();
}

void TextoRestrinxido::keyPressEvent(QKeyEvent* event)
{
    const bool isCommand = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    if (event->matches(QKeySequence::Copy) || event->matches(QKeySequence::Cut))
        copyAll();
    else if (event->matches(QKeySequence::Paste))
        takePaste();
    else if (!isCommand && pressEditingKey(event->key()))
        commit();
    else if (!isCommand && !event->text().isEmpty() && event->text()[0].isPrint()) {
        takeText(event->text());
        commit();
    } else
        event->ignore();
}

void TextoRestrinxido::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void TextoRestrinxido::mouseMoveEvent(QMouseEvent* event) { event->accept(); }

void TextoRestrinxido::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() != Qt::LeftButton)
        return;
    const auto position = cursorPositionAt(event->position().toPoint());
    moveTo(static_cast<int>(text().first(position).count(m_separator)));
    selectCurrent();
}

void TextoRestrinxido::mouseReleaseEvent(QMouseEvent* event) { event->accept(); }

void TextoRestrinxido::wheelEvent(QWheelEvent* event)
{
    if (!hasFocus()) {
        event->ignore();
        return;
    }
    m_wheelAngle += event->angleDelta().y();
    step(m_wheelAngle / wheelNotch);
    m_wheelAngle %= wheelNotch;
    commit();
    event->accept();
}

bool TextoRestrinxido::pressEditingKey(int key)
{
    switch (key) {
    case Qt::Key_Left: moveTo(m_current - 1); return true;
    case Qt::Key_Right: moveTo(m_current + 1); return true;
    case Qt::Key_Home: moveTo(0); return true;
    case Qt::Key_End: moveTo(subFieldCount() - 1); return true;
    case Qt::Key_Up: step(1); return true;
    case Qt::Key_Down: step(-1); return true;
    case Qt::Key_PageUp: step(10); return true;
    case Qt::Key_PageDown: step(-10); return true;
    case Qt::Key_Backspace: dropDigit(); return true;
    case Qt::Key_Delete:
        m_typedDigits = 0;
        m_values[m_current] = clamped(m_current, 0);
        return true;
    default: return false;
    }
}

void TextoRestrinxido::takeText(const QString& text)
{
    for (const QChar character : text.first(qMin(text.size(), longestPaste)))
        takeCharacter(character);
}

void TextoRestrinxido::takePaste()
{
    const QString text = QGuiApplication::clipboard()->text().left(longestPaste);
    moveTo(countNumbers(text) == subFieldCount() ? 0 : m_current);
    takeText(text);
    commit();
}

void TextoRestrinxido::takeCharacter(QChar character)
{
    if (isDigit(character))
        takeDigit(character.unicode() - u'0');
    else if (u"/:.,- "_s.contains(character) && m_typedDigits > 0)
        moveTo(m_current + 1);
}

void TextoRestrinxido::takeDigit(int digit)
{
    const SubField& subField = m_subFields[m_current];
    m_typedNumber = (m_typedDigits == 0 ? 0 : m_typedNumber * 10) + digit;
    ++m_typedDigits;
    m_values[m_current] = clamped(m_current, m_typedNumber);
    if (m_typedDigits == subField.digits || m_typedNumber * 10 > subField.maximum)
        moveTo(m_current + 1);
}

void TextoRestrinxido::dropDigit()
{
    if (m_typedDigits == 0) {
        m_typedDigits = m_subFields[m_current].digits;
        m_typedNumber = m_values[m_current];
    }
    --m_typedDigits;
    m_typedNumber /= 10;
    m_values[m_current] = clamped(m_current, m_typedNumber);
}

void TextoRestrinxido::step(int by)
{
    m_typedDigits = 0;
    m_values[m_current] = clamped(m_current, m_values[m_current] + by);
}

void TextoRestrinxido::moveTo(int index)
{
    m_current = std::clamp(index, 0, subFieldCount() - 1);
    m_typedDigits = 0;
}

// The selection is one sub-field only, but a date on the clipboard is wanted whole.
void TextoRestrinxido::copyAll() const { QGuiApplication::clipboard()->setText(shownText()); }

int TextoRestrinxido::clamped(int index, int value) const
{
    return std::clamp(value, m_subFields[index].minimum, m_subFields[index].maximum);
}

QString TextoRestrinxido::shownText() const
{
    QStringList parts;
    for (int i = 0; i < subFieldCount(); ++i)
        parts.append(u"%1"_s.arg(m_values[i], m_subFields[i].digits, 10, QLatin1Char('0')));
    return parts.join(m_separator);
}

void TextoRestrinxido::selectCurrent()
{
    int start = 0;
    for (int i = 0; i < m_current; ++i)
        start += m_subFields[i].digits + 1;
    setSelection(start, m_subFields[m_current].digits);
}

void TextoRestrinxido::commit()
{
    m_rendering = true;
    setText(shownText());
    m_rendering = false;
    if (hasFocus())
        selectCurrent();
    if (m_values == m_announced)
        return;
    m_announced = m_values;
    emit valuesChanged();
}
