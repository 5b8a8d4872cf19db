#include "MdiForm.h"

#include "AccessKeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>

#include <algorithm>

namespace {

/// Windows that find no room of their own overlap, each so many pixels off the one before.
constexpr int cascadeStep = 28;
constexpr int cascadeLength = 8;

} // namespace

MdiForm::MdiForm(QMdiArea& area) : QWidget(&area), m_area(area) { hide(); }

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

// The control that had the focus before, or else the first that takes it.
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
    // Hiding passes the focus on from control to control.
    m_focusWhenHidden = focusWidget();
    m_frame->hide();
    if (wasInUse)
        activateLastUsed();
}

// The area itself leaves nobody active, and the keyboard without a window.
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
    // Accepted, it is no shortcut of the main window any more, and follows as a key press, which a
    // text field would take for a letter.
    event->accept();
    if (QWidget* receiver = QApplication::focusWidget())
        receiver->installEventFilter(this);
    return true;
}

bool MdiForm::eventFilter(QObject* watched, QEvent* event)
{
    // The type first: events come here even while the frame is half destroyed.
    if (event->type() == QEvent::KeyPress && watched != m_frame) {
        watched->removeEventFilter(this);
        const auto target = accesskeys::target(*this, *static_cast<QKeyEvent*>(event));
        if (target)
            accesskeys::activate(target);
        return static_cast<bool>(target);
    }
    if (event->type() != QEvent::Close || watched != m_frame)
        return QWidget::eventFilter(watched, event);
    // The close button, Ctrl+F4 and the frame's own menu all end here.
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
    // Not every desktop's keys for closing include the one of such windows.
    else if (event->keyCombination() == (Qt::CTRL | Qt::Key_F4))
        closeWindow(CloseReason::Operator);
    else
        QWidget::keyPressEvent(event);
}

// The area itself would place the sub-window in a pattern of its own, whatever it covers.
void MdiForm::makeFrame()
{
    m_frame = m_area.addSubWindow(this);
    m_frame->installEventFilter(this);
    // A hidden form would not count for the frame's size.
    show();
    m_frame->resize(m_frame->sizeHint().expandedTo(m_frame->minimumSizeHint()));
    m_frame->move(placeBesideOthers());
}

// Beside the open windows, so that none hides what another shows, or else in a cascade.
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
