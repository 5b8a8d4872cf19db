#pragma once

#include <QDateTime>

/// The computer's date and time, local. Tests replace it.
class ClockOfDay {
public:
    virtual ~ClockOfDay() = default;

    virtual QDateTime now() const = 0;

    /// Seconds since midnight, 0 <= s < 86400, with the full resolution of the clock. (`now` has
    /// whole milliseconds.)
    virtual double secondsOfDay() const;
};

class SystemClockOfDay final : public ClockOfDay {
public:
    QDateTime now() const override;
    double secondsOfDay() const override;
};
