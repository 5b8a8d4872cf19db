#pragma once

#include "ClockOfDay.h"

#include <chrono>
#include <functional>

/// The pause of the message link. Tests record it instead of waiting.
class Pause {
public:
    using Milliseconds = std::chrono::duration<float, std::milli>;

    virtual ~Pause() = default;

    /// Returns once the time of day differs by more than `time` from that of the call.
    /// Holds the thread; with `letEventsRun` pending events are worked on meanwhile.
    virtual void Wait(Milliseconds time, bool letEventsRun) = 0;
};

/// The real pause. The difference of the times of day is taken without its sign and must be
/// strictly greater than the wait, so a pause that spans midnight ends at once.
class SystemPause final : public Pause {
public:
    using Sleep = std::function<void(std::chrono::duration<double, std::milli> time)>;

    explicit SystemPause(const ClockOfDay& clock);
    /// For tests: `sleep` holds the thread for about the time given.
    SystemPause(const ClockOfDay& clock, Sleep sleep);

    void Wait(Milliseconds time, bool letEventsRun) override;

private:
    const ClockOfDay& m_clock;
    Sleep m_sleep;
};
