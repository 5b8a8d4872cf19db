#pragma once

#include <QCoreApplication>
#include <QWheelEvent>

/// Turns the wheel over a widget; 120 is one step up. False when the widget ignores it.
inline bool turnWheel(QWidget& over, int angle)
{
    const QPointF spot(5, 5);
    QWheelEvent event(spot, over.mapToGlobal(spot), QPoint(), QPoint(0, angle), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&over, &event);
    return event.isAccepted();
}
