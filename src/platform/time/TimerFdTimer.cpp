#include "TimerFdTimer.h"

#include <QSocketNotifier>

#include <cstdint>

#include <sys/timerfd.h>
#include <unistd.h>

using namespace std::chrono_literals;

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
    // Before the descriptor is closed, because its number may be used again.
    delete m_notifier;
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

void TimerFdTimer::intervalChanged() { arm(isRunning() ? interval() : 0ms); }

void TimerFdTimer::enabledChanged()
{
    if (isRunning() && !m_armed)
        arm(interval());
}

void TimerFdTimer::expired()
{
    std::uint64_t expirations = 0;
    if (::read(m_descriptor, &expirations, sizeof expirations) != sizeof expirations)
        return;
    if (isEnabled())
        emit tick();
    else
        arm(0ms);
}

void TimerFdTimer::arm(std::chrono::milliseconds period)
{
    if (m_descriptor < 0)
        return;
    const auto seconds = std::chrono::floor<std::chrono::seconds>(period);
    itimerspec timing{};
    timing.it_interval.tv_sec = seconds.count();
    timing.it_interval.tv_nsec = std::chrono::nanoseconds(period - seconds).count();
    timing.it_value = timing.it_interval;
    ::timerfd_settime(m_descriptor, 0, &timing, nullptr);
    m_armed = period > 0ms;
}
