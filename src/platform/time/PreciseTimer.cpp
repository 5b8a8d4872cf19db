#include "PreciseTimer.h"

PreciseTimer::PreciseTimer(QObject* parent) : IntervalTimer(parent)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &IntervalTimer::tick);
}

void PreciseTimer::apply()
{
    if (isRunning())
        m_timer.start(interval());
    else
        m_timer.stop();
}
