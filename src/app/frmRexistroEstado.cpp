#include "frmRexistroEstado.h"

#include "ClockOfDay.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmRexistroEstado::frmRexistroEstado(QMdiArea& area, const ClockOfDay& clock)
    : MdiForm(area), m_clock(clock), txtRexistro(new QPlainTextEdit)
{
    setObjectName(u"frmRexistroEstado"_s);
    setWindowTitle(u"Registro de estado de la aplicación"_s);
    txtRexistro->setObjectName(u"txtRexistro"_s);
    txtRexistro->setAccessibleName(windowTitle());
    txtRexistro->setReadOnly(true);
    txtRexistro->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    txtRexistro->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtRexistro->setUndoRedoEnabled(false);
    txtRexistro->setFrameShape(QFrame::NoFrame);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(txtRexistro);
    setFocusProxy(txtRexistro);
}

void frmRexistroEstado::Rexistra(const QString& message, bool show)
{
    const QDateTime now = m_clock.now();
    const QString stamp = now.toString(u"dd'/'MM'/'yyyy' - 'HH':'mm':'ss"_s);
    append(stamp + u" :: "_s + message + u"\n"_s);
    // Under a modal window it could not be used; it can be opened from the menu afterwards.
    if (show && !QApplication::activeModalWidget())
        showForm();
}

void frmRexistroEstado::append(const QString& entry)
{
    const QTextCursor selection = txtRexistro->textCursor();
    const int anchor = selection.anchor();
    const int position = selection.position();
    QScrollBar* rows = txtRexistro->verticalScrollBar();
    QScrollBar* columns = txtRexistro->horizontalScrollBar();
    const int row = rows->value();
    const int column = columns->value();
    const bool following = row == rows->maximum() && !selection.hasSelection();
    QTextCursor end(txtRexistro->document());
    end.movePosition(QTextCursor::End);
    end.insertText(entry);
    // What is inserted at a cursor pushes it along: one that stood at the end goes back.
    QTextCursor kept = txtRexistro->textCursor();
    if (kept.anchor() != anchor || kept.position() != position) {
        kept.setPosition(anchor);
        kept.setPosition(position, QTextCursor::KeepAnchor);
        txtRexistro->setTextCursor(kept);
    }
    // Setting the cursor has brought it into view.
    rows->setValue(following ? rows->maximum() : row);
    columns->setValue(column);
}

QSize frmRexistroEstado::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {metrics.averageCharWidth() * 72, metrics.lineSpacing() * 16};
}

bool frmRexistroEstado::queryUnload(CloseReason reason)
{
    if (reason != CloseReason::Operator)
        return true;
    hideForm();
    return false;
}
