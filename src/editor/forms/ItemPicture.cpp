#include "ItemPicture.h"

#include "WidgetDescription.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

ItemPicture::ItemPicture(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
}

void ItemPicture::setCurrentItem(int item)
{
    item = std::clamp(item, -1, itemCount() - 1);
    if (item == m_current)
        return;
    m_current = item;
    update();
    emit currentItemChanged();
    tellFocus();
}

void ItemPicture::itemsChanged()
{
    const int last = itemCount() - 1;
    m_current = last < 0 ? -1 : std::clamp(m_current, 0, last);
    update();
    QAccessibleEvent reset(this, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&reset);
    emit itemsReplaced();
}

void ItemPicture::drawFocus(QPainter& painter) const
{
    if (!hasFocus() || m_current < 0)
        return;
    const QRectF frame = itemRect(m_current).adjusted(-1.5, -1.5, 1.5, 1.5);
    painter.setBrush(Qt::NoBrush);
    // Two lines, of which one is seen on any colour.
    painter.setPen(QPen(palette().color(QPalette::Base), 4));
    painter.drawRoundedRect(frame, 3, 3);
    painter.setPen(QPen(palette().color(QPalette::Text), 2));
    painter.drawRoundedRect(frame, 3, 3);
}

bool ItemPicture::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int item = itemAt(help->pos());
    if (item < 0)
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), literalToolTip(itemName(item)), this,
                           itemRect(item).toAlignedRect());
    return true;
}

void ItemPicture::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    if (m_current < 0)
        setCurrentItem(0);
    else
        tellFocus();
    update();
}

void ItemPicture::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

void ItemPicture::tellFocus()
{
    if (!hasFocus() || m_current < 0 || !QAccessible::isActive())
        return;
    QAccessibleEvent focus(this, QAccessible::Focus);
    focus.setChild(m_current);
    QAccessible::updateAccessibility(&focus);
}
