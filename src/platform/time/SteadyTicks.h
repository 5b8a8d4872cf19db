#pragma once

#include "TickTimer.h"

/// The grid of ticks on the system's steady clock. It begins with this object.
class SteadyTicks {
public:
    using Clock = std::chrono::steady_clock;

    qint64 now() const { return (Clock::now() - m_origin) / TickTimer::interval; }
    /// When the tick of this number passes.
    Clock::time_point timeOf(qint64 tick) const { return m_origin + tick * TickTimer::interval; }

private:
    Clock::time_point m_origin = Clock::now();
};
