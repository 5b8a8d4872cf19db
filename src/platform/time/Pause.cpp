#include "Pause.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>
#include <utility>

using namespace std::chrono_literals;

namespace {

using PreciseMilliseconds = std::chrono::duration<double, std::milli>;
using PreciseSeconds = std::chrono::duration<double>;

void sleepPrecisely(PreciseMilliseconds time) { std::this_thread::sleep_for(time); }

/// Processes pending events, or waits for one, for at most `time`.
void runEvents(PreciseMilliseconds time)
{
    QTimer wake;
    wake.setTimerType(Qt::PreciseTimer);
    wake.setSingleShot(true);
    wake.start(std::chrono::ceil<std::chrono::milliseconds>(time));
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace

SystemPause::SystemPause(const ClockOfDay& clock) : SystemPause(clock, sleepPrecisely) {}

SystemPause::SystemPause(const ClockOfDay& clock, Sleep sleep)
    : m_clock(clock), m_sleep(std::move(sleep))
{}

void SystemPause::Wait(Milliseconds time, bool letEventsRun)
{
    const double limit = static_cast<double>(std::chrono::duration<float>(time).count());
    const double start = m_clock.secondsOfDay();
    double difference = 0;
    while (difference <= limit) {
        // At least 10 us, because the difference may equal the limit and must exceed it. At most a
        // second, so that a change of the clock is noticed.
        const PreciseMilliseconds rest =
            std::clamp<PreciseMilliseconds>(PreciseSeconds(limit - difference), 10us, 1s);
        if (letEventsRun)
            runEvents(rest);
        else
            m_sleep(rest);
        difference = std::abs(m_clock.secondsOfDay() - start);
    }
}
