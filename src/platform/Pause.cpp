#include "Pause.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>
#include <utility>

namespace {

void sleepPrecisely(double milliseconds)
{
    std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(milliseconds));
}

/// Works on pending events, waiting for one at most `milliseconds`.
void runEvents(double milliseconds)
{
    QTimer wake;
    wake.setTimerType(Qt::PreciseTimer);
    wake.setSingleShot(true);
    wake.start(static_cast<int>(std::ceil(milliseconds)));
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace

SystemPause::SystemPause(const ClockOfDay& clock) : SystemPause(clock, sleepPrecisely) {}

SystemPause::SystemPause(const ClockOfDay& clock, Sleep sleep)
    : m_clock(clock), m_sleep(std::move(sleep))
{}

void SystemPause::Wait(float milliseconds, bool letEventsRun)
{
    const double limit = static_cast<double>(milliseconds / 1000.0F);
    const double start = m_clock.secondsOfDay();
    double difference = 0;
    while (difference <= limit) {
        // The difference may be exactly the limit and must exceed it, so the rest is never nothing;
        // and no longer than a second, so that a clock put right meanwhile is noticed.
        const double rest = std::clamp((limit - difference) * 1000.0, 0.01, 1000.0);
        if (letEventsRun)
            runEvents(rest);
        else
            m_sleep(rest);
        difference = std::abs(m_clock.secondsOfDay() - start);
    }
}
