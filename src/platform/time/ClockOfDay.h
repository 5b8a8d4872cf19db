#pragma once

#include <QDateTime>

/// The computer's clock, local time. Tests put their own in its place.
class ClockOfDay {
public:
    virtual ~ClockOfDay() = default;

    virtual QDateTime now() const = 0;

    /// Seconds since midnight, with the fraction: 0 <= s < 86400. As fine as the clock is, which
    /// `now` with its milliseconds need not be.
    virtual double secondsOfDay() const;
};

class SystemClockOfDay final : public ClockOfDay {
public:
    QDateTime now() const override;
    double secondsOfDay() const override;
};
