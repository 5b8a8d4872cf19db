#include "IntervalTimer.h"

void IntervalTimer::setInterval(std::chrono::milliseconds interval)
{
    if (interval == m_interval)
        return;
    m_interval = interval;
    intervalChanged();
}

void IntervalTimer::setEnabled(bool enabled)
{
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    enabledChanged();
}
