#pragma once

#include "ClockOfDay.h"

#include <functional>

/// The pause of the message link. Tests record it instead of waiting.
class Pause {
public:
    virtual ~Pause() = default;

    /// Returns once the time of day differs by more than `milliseconds` from that of the call.
    /// Holds the thread; with `letEventsRun` pending events are worked on meanwhile.
    virtual void Wait(float milliseconds, bool letEventsRun) = 0;
};

/// The real pause. The difference of the times of day is taken without its sign and must be
/// strictly greater than the wait, so a pause that spans midnight ends at once.
class SystemPause final : public Pause {
public:
    using Sleep = std::function<void(double milliseconds)>;

    explicit SystemPause(const ClockOfDay& clock);
    /// For tests: `sleep` holds the thread for about the time given.
    SystemPause(const ClockOfDay& clock, Sleep sleep);

    void Wait(float milliseconds, bool letEventsRun) override;

private:
    const ClockOfDay& m_clock;
    Sleep m_sleep;
};
