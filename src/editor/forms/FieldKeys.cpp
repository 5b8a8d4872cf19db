#include "FieldKeys.h"

#include "NumberField.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>

namespace {

bool clipboardHasRows()
{
    const QString text = QGuiApplication::clipboard()->text();
    return text.contains(u'\t') || text.trimmed().contains(u'\n');
}

} // namespace

FieldKeys::FieldKeys(const std::function<bool()>& areRowsSelected, QObject* parent)
    : QObject(parent), m_areRowsSelected(areRowsSelected)
{}

void FieldKeys::watch(const QWidget& page)
{
    for (NumberField* field : page.findChildren<NumberField*>())
        field->installEventFilter(this);
}

bool FieldKeys::eventFilter(QObject* /*watched*/, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride || !isOfWindow(*static_cast<QKeyEvent*>(event)))
        return false;
    event->ignore();
    return true;
}

bool FieldKeys::isOfWindow(QKeyEvent& event) const
{
    for (const auto key : {QKeySequence::Undo, QKeySequence::Redo, QKeySequence::SelectAll})
        if (event.matches(key))
            return true;
    if (event.matches(QKeySequence::Paste))
        return m_areRowsSelected() || clipboardHasRows();
    for (const auto key : {QKeySequence::Cut, QKeySequence::Copy, QKeySequence::Delete})
        if (event.matches(key))
            return m_areRowsSelected();
    return false;
}
