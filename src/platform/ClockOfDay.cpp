#include "ClockOfDay.h"

double ClockOfDay::secondsOfDay() const
{
    return now().time().msecsSinceStartOfDay() / 1000.0;
}

QDateTime SystemClockOfDay::now() const
{
    return QDateTime::currentDateTime();
}
