#include "InputFilter.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

namespace {

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::NativeGesture:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: return true;
    default: return false;
    }
}

} // namespace

InputFilter::InputFilter() : m_loopLevel(thread()->loopLevel() + 1)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool InputFilter::eventFilter(QObject* /*watched*/, QEvent* event)
{
    if (!isInput(event->type()) || thread()->loopLevel() > m_loopLevel)
        return false;
    // What nobody has taken is left to the system, which closes a window at Alt+F4.
    event->ignore();
    return true;
}
