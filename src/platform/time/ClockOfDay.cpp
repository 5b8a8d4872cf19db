#include "ClockOfDay.h"

#include <chrono>

double ClockOfDay::secondsOfDay() const { return now().time().msecsSinceStartOfDay() / 1000.0; }

QDateTime SystemClockOfDay::now() const { return QDateTime::currentDateTime(); }

double SystemClockOfDay::secondsOfDay() const
{
    using namespace std::chrono;
    // Not in whole milliseconds: a pause of 4 ms would last up to 5 ms.
    const auto sinceEpoch = system_clock::now().time_since_epoch();
    const auto whole = floor<milliseconds>(sinceEpoch);
    const QTime time = QDateTime::fromMSecsSinceEpoch(whole.count()).time();
    return time.msecsSinceStartOfDay() / 1000.0 + duration<double>(sinceEpoch - whole).count();
}
