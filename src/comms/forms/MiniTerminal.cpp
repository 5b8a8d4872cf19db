#include "MiniTerminal.h"

#include "AnsiText.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QScrollBar>

namespace {

/// Alt with a key is an access key. AltGr may come as Ctrl and Alt together, and then types the
/// likes of "#" and "@".
bool isAccessKey(const QKeyEvent& event)
{
    return event.modifiers().testFlag(Qt::AltModifier) &&
           !event.modifiers().testFlag(Qt::ControlModifier);
}

bool isShown(QChar character)
{
    return character == u'\n' || character == u'\t' || character.isPrint();
}

} // namespace

MiniTerminal::MiniTerminal(QWidget* parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    // A text that is read only turns it off, and with it the dead keys.
    setAttribute(Qt::WA_InputMethodEnabled);
    // What is typed are commands, and SIM codes among them.
    setInputMethodHints(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase | Qt::ImhSensitiveData);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
}

void MiniTerminal::AppendToTerminal(const QString& text)
{
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    int column = cursor.positionInBlock();
    QString shown;
    for (const QChar character : text) {
        if (!isShown(character))
            continue;
        if (character != u'\n' && column == maximumLine) {
            shown += u'\n';
            column = 0;
        }
        shown += character;
        column = character == u'\n' ? 0 : column + 1;
    }
    if (shown.isEmpty())
        return;
    cursor.insertText(shown);
    if (const int excess = document()->characterCount() - maximumText; excess > 0) {
        cursor.setPosition(0);
        cursor.setPosition(excess, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    }
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

QSize MiniTerminal::sizeHint() const
{
    constexpr int columns = 48;
    constexpr int lines = 14;
    const int frame = 2 * frameWidth() + static_cast<int>(2 * document()->documentMargin());
    return {columns * fontMetrics().horizontalAdvance(u'0') + frame +
                verticalScrollBar()->sizeHint().width(),
            lines * fontMetrics().lineSpacing() + frame};
}

void MiniTerminal::keyPressEvent(QKeyEvent* event)
{
    // The text itself handles paging, selecting and copying; the dialog handles Esc, Tab and access
    // keys. All other keys go to the modem.
    if (event->matches(QKeySequence::Copy) || event->matches(QKeySequence::SelectAll) ||
        event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)
        return QPlainTextEdit::keyPressEvent(event);
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Tab ||
        event->key() == Qt::Key_Backtab || isAccessKey(*event))
        return event->ignore();
    event->accept();
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Clear ||
        event->matches(QKeySequence::Paste))
        return;
    handOn(event->text());
}

void MiniTerminal::inputMethodEvent(QInputMethodEvent* event)
{
    event->accept();
    handOn(event->commitString());
}

QVariant MiniTerminal::inputMethodQuery(Qt::InputMethodQuery query) const
{
    return query == Qt::ImReadOnly ? QVariant(false) : QPlainTextEdit::inputMethodQuery(query);
}

void MiniTerminal::handOn(const QString& text)
{
    const QString composed = text.normalized(QString::NormalizationForm_C);
    QByteArray characters;
    for (const QChar character : composed) {
        const QByteArray bytes = AnsiText::fromUnicode(QStringView(&character, 1));
        // There and back: what the code page lacks would go as another character.
        if (AnsiText::toUnicode(bytes) == character)
            characters += bytes;
    }
    if (!characters.isEmpty())
        emit typed(characters);
}
