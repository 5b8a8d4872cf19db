#include "MdiForm.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>

MdiForm::MdiForm(QMdiArea& area) : m_frame(area.addSubWindow(this))
{
    m_frame->hide();
    m_frame->installEventFilter(this);
}

MdiForm::~MdiForm()
{
    // A frame that takes its form with it is no QMdiSubWindow any more by now.
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget())) {
        frame->hide();
        frame->deleteLater();
    }
}

void MdiForm::showForm()
{
    if (m_unloaded || !m_frame)
        return;
    if (!m_placed)
        placeFrame();
    if (m_frame->isMinimized() || m_frame->isShaded())
        m_frame->showNormal();
    m_frame->show();
    show();
    m_frame->raise();
    m_frame->mdiArea()->setActiveSubWindow(m_frame);
    QWidget* inner = focusWidget();
    (inner ? inner : this)->setFocus(Qt::ActiveWindowFocusReason);
}

void MdiForm::hideForm()
{
    if (m_frame)
        m_frame->hide();
}

bool MdiForm::isFormVisible() const { return m_frame && m_frame->isVisible(); }

bool MdiForm::mayUnload(CloseReason reason)
{
    if (m_asking)
        return false;
    m_asking = true;
    const QPointer<MdiForm> self(this);
    const bool agreed = queryUnload(reason);
    if (!self)
        return true;
    m_asking = false;
    return agreed;
}

bool MdiForm::closeWindow(CloseReason reason)
{
    if (m_unloaded)
        return true;
    const QPointer<MdiForm> self(this);
    if (!mayUnload(reason))
        return false;
    if (!self || m_unloaded)
        return true;
    m_unloaded = true;
    unload();
    hideForm();
    emit unloaded();
    if (self && m_frame)
        m_frame->deleteLater();
    return true;
}

bool MdiForm::queryUnload(CloseReason) { return true; }

// The close button, Ctrl+F4 and the frame's own menu all end in a close event of the frame.
bool MdiForm::eventFilter(QObject* watched, QEvent* event)
{
    // The type first: events come here even while the frame is half destroyed.
    if (event->type() != QEvent::Close || watched != m_frame)
        return QWidget::eventFilter(watched, event);
    event->ignore();
    closeWindow(CloseReason::Operator);
    return true;
}

// The area itself places a sub-window when it is added, when the form has no contents yet.
void MdiForm::placeFrame()
{
    m_placed = true;
    const QMdiArea& area = *m_frame->mdiArea();
    int shown = 0;
    for (const QMdiSubWindow* other : area.subWindowList())
        shown += other->isVisible() ? 1 : 0;
    const QSize room = area.viewport()->size();
    m_frame->resize(m_frame->sizeHint().expandedTo(m_frame->minimumSizeHint()));
    const int step = 28 * (shown % 8);
    const QSize spare = (room - m_frame->size()).expandedTo(QSize(0, 0));
    m_frame->move(std::min(step, spare.width()), std::min(step, spare.height()));
}
