#include "UpDownField.h"

#include <QApplication>
#include <QClipboard>
#include <QIntValidator>
#include <QKeyEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int pageStep = 10;

bool isDigit(const QString& text)
{
    return text.size() == 1 && text.front() >= u'0' && text.front() <= u'9';
}

/// Whatever one may type between the numbers of a time or a date.
bool isSeparator(const QString& text) { return text.size() == 1 && u":/.,- "_s.contains(text); }

} // namespace

UpDownField::UpDownField(const TextUpDown::Field& field, TextUpDown& owner)
    : QLineEdit(&owner), m_owner(owner), m_field(field)
{
    setFrame(false);
    setAlignment(Qt::AlignCenter);
    setAccessibleName(field.accessibleName);
    setInputMethodHints(Qt::ImhDigitsOnly);
    setAcceptDrops(false);
    setMaxLength(digits());
    // What comes past the keyboard (input methods, the menu's Paste) is held to the range by it.
    setValidator(new QIntValidator(0, field.maximum, this));
    connect(this, &QLineEdit::textEdited, this, &UpDownField::textWasEdited);
    setText(format(m_value));
}

void UpDownField::setValue(int value)
{
    const QString shown = format(value);
    if (text() != shown) {
        // A value out of the range may be longer than what can be typed.
        setMaxLength(std::max(digits(), static_cast<int>(shown.size())));
        setText(shown);
        if (hasFocus())
            selectAll();
    }
    if (value == m_value)
        return;
    m_value = value;
    emit m_owner.valueChanged();
}

void UpDownField::step(int steps)
{
    setValue(std::clamp(m_value + steps, m_field.minimum, m_field.maximum));
    if (hasFocus())
        selectAll();
}

int UpDownField::widthForText() const
{
    // The line edit keeps 2 pixels free on both sides, and the cursor needs one.
    return fontMetrics().horizontalAdvance(QString(digits(), u'0')) + 5;
}

void UpDownField::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    m_selectOnPress = event->reason() == Qt::MouseFocusReason;
    if (event->reason() != Qt::PopupFocusReason)
        selectAll();
    m_owner.fieldGotFocus(this);
}

void UpDownField::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) {
        setValue(m_value);
        deselect();
    }
    m_owner.fieldLostFocus();
}

void UpDownField::mousePressEvent(QMouseEvent* event)
{
    QLineEdit::mousePressEvent(event);
    if (m_selectOnPress)
        selectAll();
    m_selectOnPress = false;
}

void UpDownField::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Paste)) {
        m_owner.pasteFrom(this, QApplication::clipboard()->text());
        return;
    }
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::NoModifier && handleMovement(*event))
        return;
    if ((modifiers & ~Qt::ShiftModifier) == 0 && handleText(event->text()))
        return;
    QLineEdit::keyPressEvent(event);
}

bool UpDownField::handleMovement(QKeyEvent& event)
{
    const bool allSelected = selectedText().size() == text().size();
    switch (event.key()) {
    case Qt::Key_Up: step(1); return true;
    case Qt::Key_Down: step(-1); return true;
    case Qt::Key_PageUp: step(pageStep); return true;
    case Qt::Key_PageDown: step(-pageStep); return true;
    case Qt::Key_Left:
        if (!allSelected && cursorPosition() > 0)
            return false;
        // Past the first and the last number it is for whoever holds many of these controls.
        event.setAccepted(m_owner.moveField(this, -1));
        return true;
    case Qt::Key_Right:
        if (!allSelected && cursorPosition() < text().size())
            return false;
        event.setAccepted(m_owner.moveField(this, 1));
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: event.ignore(); return true;
    default: return false;
    }
}

bool UpDownField::handleText(const QString& text)
{
    if (isSeparator(text)) {
        m_owner.moveField(this, 1);
        return true;
    }
    if (!isDigit(text))
        return false;
    // 9 and then 3 is no hour: the 3 begins the minute.
    const bool atEnd = !hasSelectedText() && cursorPosition() == this->text().size();
    if (!typeDigit(text) && atEnd)
        if (UpDownField* next = m_owner.fieldAfter(this)) {
            next->setFocus(Qt::OtherFocusReason);
            next->typeDigit(text);
        }
    return true;
}

bool UpDownField::typeDigit(const QString& digit)
{
    const bool atEnd = hasSelectedText() || cursorPosition() == text().size();
    QString result = text();
    if (hasSelectedText())
        result.replace(selectionStart(), selectedText().size(), digit);
    else
        result.insert(cursorPosition(), digit);
    if (result.size() > digits() || result.toInt() > m_field.maximum)
        return false;
    insert(digit);
    textWasEdited();
    if (atEnd && result.size() == digits())
        m_owner.moveField(this, 1);
    return true;
}

void UpDownField::textWasEdited()
{
    const int value = std::max(text().toInt(), m_field.minimum);
    if (value == m_value)
        return;
    m_value = value;
    emit m_owner.valueChanged();
}

QString UpDownField::format(int value) const
{
    return QString::number(value).rightJustified(m_field.width, u'0');
}

int UpDownField::digits() const
{
    return static_cast<int>(QString::number(m_field.maximum).size());
}
