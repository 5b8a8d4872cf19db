#include "IntervalTimer.h"

#ifdef Q_OS_LINUX
#include "TimerFdTimer.h"
#endif

PreciseTimer::PreciseTimer(QObject* parent) : IntervalTimer(parent)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &IntervalTimer::tick);
}

void PreciseTimer::setInterval(int milliseconds)
{
    if (milliseconds == m_interval)
        return;
    m_interval = milliseconds;
    apply();
}

void PreciseTimer::setEnabled(bool enabled)
{
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    apply();
}

void PreciseTimer::apply()
{
    if (m_enabled && m_interval > 0)
        m_timer.start(m_interval);
    else
        m_timer.stop();
}

BeatTimer::BeatTimer(QObject* parent) : IntervalTimer(parent)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &BeatTimer::beat);
}

void BeatTimer::setInterval(int milliseconds)
{
    if (milliseconds == m_interval)
        return;
    m_interval = milliseconds;
    if (m_enabled && m_interval > 0)
        m_timer.start(m_interval);
    else
        m_timer.stop();
}

void BeatTimer::setEnabled(bool enabled)
{
    m_enabled = enabled;
    if (m_enabled && m_interval > 0 && !m_timer.isActive())
        m_timer.start(m_interval);
}

void BeatTimer::beat()
{
    if (m_enabled)
        emit tick();
    else
        m_timer.stop();
}

std::unique_ptr<IntervalTimer> makeTickTimer()
{
#ifdef Q_OS_LINUX
    auto timer = std::make_unique<TimerFdTimer>();
    if (timer->isValid())
        return timer;
#endif
    return std::make_unique<BeatTimer>();
}
