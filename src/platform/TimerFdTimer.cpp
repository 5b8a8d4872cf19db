#include "TimerFdTimer.h"

#include <QSocketNotifier>

#include <cstdint>

#include <sys/timerfd.h>
#include <unistd.h>

TimerFdTimer::TimerFdTimer(QObject* parent)
    : IntervalTimer(parent),
      m_descriptor(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC))
{
    if (m_descriptor < 0)
        return;
    m_notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TimerFdTimer::expired);
}

TimerFdTimer::~TimerFdTimer()
{
    // The notifier goes first: it must not watch a descriptor that is already somebody else's.
    delete m_notifier;
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

void TimerFdTimer::setInterval(int milliseconds)
{
    if (milliseconds == m_interval)
        return;
    m_interval = milliseconds;
    arm(m_enabled && m_interval > 0 ? m_interval : 0);
}

void TimerFdTimer::setEnabled(bool enabled)
{
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    if (m_enabled && !m_armed && m_interval > 0)
        arm(m_interval);
}

void TimerFdTimer::expired()
{
    std::uint64_t expirations = 0;
    if (::read(m_descriptor, &expirations, sizeof expirations) != sizeof expirations)
        return;
    if (m_enabled)
        emit tick();
    else
        arm(0);
}

void TimerFdTimer::arm(int milliseconds)
{
    if (m_descriptor < 0)
        return;
    itimerspec period{};
    period.it_interval.tv_sec = milliseconds / 1000;
    period.it_interval.tv_nsec = (milliseconds % 1000) * 1'000'000L;
    period.it_value = period.it_interval;
    ::timerfd_settime(m_descriptor, 0, &period, nullptr);
    m_armed = milliseconds > 0;
}
