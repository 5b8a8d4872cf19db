#include "BeatTimer.h"

BeatTimer::BeatTimer(QObject* parent) : IntervalTimer(parent)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &BeatTimer::beat);
}

void BeatTimer::intervalChanged()
{
    if (isRunning())
        m_timer.start(interval());
    else
        m_timer.stop();
}

void BeatTimer::enabledChanged()
{
    if (isRunning() && !m_timer.isActive())
        m_timer.start(interval());
}

void BeatTimer::beat()
{
    if (isEnabled())
        emit tick();
    else
        m_timer.stop();
}
