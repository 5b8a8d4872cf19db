#include "MdiForm.h"

#include "AccessKeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>

#include <algorithm>

namespace {

/// Windows without free room are cascaded: each so many pixels right of and below the one before.
constexpr int cascadeStep = 28;
constexpr int cascadeLength = 8;

} // namespace

MdiForm::MdiForm(QMdiArea& area) : QWidget(&area), m_area(area) { hide(); }

MdiForm::~MdiForm()
{
    // When the frame is being destroyed and deletes its form, it is no QMdiSubWindow any more.
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget())) {
        frame->hide();
        frame->deleteLater();
    }
}

void MdiForm::showForm()
{
    if (m_unloaded)
        return;
    if (!m_frame)
        makeFrame();
    if (m_frame->isMinimized() || m_frame->isShaded())
        m_frame->showNormal();
    m_frame->show();
    m_frame->raise();
    m_area.setActiveSubWindow(m_frame);
    focusTarget().setFocus(Qt::ActiveWindowFocusReason);
}

// The control that had the focus before, otherwise the first that accepts it.
QWidget& MdiForm::focusTarget()
{
    QWidget* before = m_focusWhenHidden ? m_focusWhenHidden.data() : focusWidget();
    m_focusWhenHidden.clear();
    if (before && before != this && before->isEnabled())
        return *before;
    for (QWidget* widget = nextInFocusChain(); widget != this; widget = widget->nextInFocusChain())
        if (isAncestorOf(widget) && accesskeys::takesFocus(*widget))
            return *widget;
    return *this;
}

void MdiForm::hideForm()
{
    if (!m_frame)
        return;
    const bool wasInUse = m_area.currentSubWindow() == m_frame;
    // Remember it now: hiding moves the focus from control to control.
    m_focusWhenHidden = focusWidget();
    m_frame->hide();
    if (wasInUse)
        activateLastUsed();
}

// The MDI area would activate no window, and keys would go nowhere.
void MdiForm::activateLastUsed()
{
    const QList<QMdiSubWindow*> byUse = m_area.subWindowList(QMdiArea::ActivationHistoryOrder);
    const auto last = std::find_if(byUse.rbegin(), byUse.rend(), [](const QMdiSubWindow* frame) {
        return frame->isVisible() && !frame->isMinimized();
    });
    if (last != byUse.rend())
        m_area.setActiveSubWindow(*last);
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
    if (self)
        unloadNow();
    return true;
}

void MdiForm::unloadNow()
{
    if (m_unloaded)
        return;
    m_unloaded = true;
    const QPointer<MdiForm> self(this);
    unload();
    hideForm();
    emit unloaded();
    if (!self)
        return;
    if (m_frame)
        m_frame->deleteLater();
    else
        deleteLater();
}

bool MdiForm::queryUnload(CloseReason) { return true; }

bool MdiForm::event(QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride ||
        !accesskeys::target(*this, *static_cast<QKeyEvent*>(event)))
        return QWidget::event(event);
    // Accepting it keeps it from the main window's shortcuts. It then comes as a key press, which a
    // text field would insert as a letter: the event filter below takes it instead.
    event->accept();
    if (QWidget* receiver = QApplication::focusWidget())
        receiver->installEventFilter(this);
    return true;
}

bool MdiForm::eventFilter(QObject* watched, QEvent* event)
{
    // Check the type first: events arrive even while the frame is being destroyed.
    if (event->type() == QEvent::KeyPress && watched != m_frame) {
        watched->removeEventFilter(this);
        const auto target = accesskeys::target(*this, *static_cast<QKeyEvent*>(event));
        if (target)
            accesskeys::activate(target);
        return static_cast<bool>(target);
    }
    if (event->type() != QEvent::Close || watched != m_frame)
        return QWidget::eventFilter(watched, event);
    // The close button, Ctrl+F4 and the frame's menu all arrive here.
    event->ignore();
    closeWindow(CloseReason::Operator);
    return true;
}

void MdiForm::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* button = qobject_cast<QPushButton*>(QApplication::focusWidget());
    if (isEnter && !event->isAutoRepeat() && button && isAncestorOf(button))
        button->click();
    // Ctrl+F4 is not a key for closing on every desktop.
    else if (event->keyCombination() == (Qt::CTRL | Qt::Key_F4))
        closeWindow(CloseReason::Operator);
    else
        QWidget::keyPressEvent(event);
}

// Placed here, because the MDI area would cover other windows.
void MdiForm::makeFrame()
{
    m_frame = m_area.addSubWindow(this);
    m_frame->installEventFilter(this);
    // The size of the frame does not include a hidden form.
    show();
    m_frame->resize(m_frame->sizeHint().expandedTo(m_frame->minimumSizeHint()));
    m_frame->move(placeBesideOthers());
}

// Beside the open windows, so that none covers another; otherwise in a cascade.
QPoint MdiForm::placeBesideOthers() const
{
    const QRect room = m_area.viewport()->rect();
    QRegion taken;
    QList<int> columns{0};
    QList<int> rows{0};
    int shown = 0;
    for (const QMdiSubWindow* other : m_area.subWindowList()) {
        if (other == m_frame || !other->isVisible())
            continue;
        ++shown;
        taken += other->geometry();
        columns.append(other->geometry().right() + 1);
        rows.append(other->geometry().bottom() + 1);
    }
    std::sort(columns.begin(), columns.end());
    std::sort(rows.begin(), rows.end());
    for (const int y : rows)
        for (const int x : columns) {
            const QRect place(QPoint(x, y), m_frame->size());
            if (room.contains(place) && !taken.intersects(place))
                return place.topLeft();
        }
    const int step = cascadeStep * (shown % cascadeLength);
    const QSize spare = (room.size() - m_frame->size()).expandedTo(QSize(0, 0));
    return {std::min(step, spare.width()), std::min(step, spare.height())};
}
