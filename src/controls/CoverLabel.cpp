#include "CoverLabel.h"

#include <QMouseEvent>

void CoverLabel::mousePressEvent(QMouseEvent* event)
{
    m_pressed = event->button() == Qt::LeftButton;
    event->accept();
}

void CoverLabel::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() != Qt::LeftButton || !m_pressed)
        return;
    m_pressed = false;
    if (rect().contains(event->position().toPoint()))
        emit clicked();
}
