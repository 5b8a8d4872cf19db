#include "TickTimer.h"

void TickTimer::setEnabled(bool enabled)
{
    m_enabled = enabled;
    if (!enabled)
        m_wakeAt.reset();
}

void TickTimer::wakeAt(qint64 tick)
{
    if (!m_enabled || m_wakeAt == tick)
        return;
    m_wakeAt = tick;
    arm(tick);
}

void TickTimer::sleep()
{
    m_wakeAt.reset();
    disarm();
}

bool TickTimer::expired()
{
    if (!m_wakeAt)
        return false;
    // A timer of the system may be early, or may have been armed for an earlier tick.
    if (now() < *m_wakeAt) {
        arm(*m_wakeAt);
        return true;
    }
    m_wakeAt.reset();
    emit wake();
    return true;
}
