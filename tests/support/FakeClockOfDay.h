#pragma once

#include "ClockOfDay.h"

/// A clock of day that changes only when the test sets it.
class FakeClockOfDay final : public ClockOfDay {
public:
    QDateTime time{QDate(2026, 11, 21), QTime(9, 5, 3)};

    QDateTime now() const override { return time; }
    void advance(double milliseconds) { time = time.addMSecs(static_cast<qint64>(milliseconds)); }
};
