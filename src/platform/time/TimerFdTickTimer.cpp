#include "TimerFdTickTimer.h"

#include <QSocketNotifier>

#include <cstdint>

#include <sys/timerfd.h>
#include <unistd.h>

using namespace std::chrono_literals;

// CLOCK_MONOTONIC is the clock of std::chrono::steady_clock.
TimerFdTickTimer::TimerFdTickTimer(QObject* parent)
    : TickTimer(parent), m_descriptor(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC))
{
    if (m_descriptor < 0)
        return;
    m_notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TimerFdTickTimer::readable);
}

TimerFdTickTimer::~TimerFdTickTimer()
{
    // Before the descriptor is closed, because its number may be used again.
    delete m_notifier;
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

void TimerFdTickTimer::arm(qint64 tick)
{
    setTime(m_ticks.timeOf(tick).time_since_epoch());
    m_armed = true;
}

void TimerFdTickTimer::disarm()
{
    if (m_armed)
        setTime(0ns);
    m_armed = false;
}

void TimerFdTickTimer::readable()
{
    std::uint64_t expirations = 0;
    // It may have been stopped since it expired. `expired` looks at the clock.
    [[maybe_unused]] const auto size = ::read(m_descriptor, &expirations, sizeof expirations);
    m_armed = false;
    expired();
}

void TimerFdTickTimer::setTime(std::chrono::nanoseconds time) const
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    itimerspec timing{};
    timing.it_value.tv_sec = seconds.count();
    timing.it_value.tv_nsec = (time - seconds).count();
    ::timerfd_settime(m_descriptor, TFD_TIMER_ABSTIME, &timing, nullptr);
}
