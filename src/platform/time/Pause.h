#pragma once

#include "ClockOfDay.h"

#include <chrono>
#include <functional>

/// The pauses within a request. Tests replace it and do not wait.
class Pause {
public:
    /// The system's wait is a single-precision number of milliseconds.
    using Milliseconds = std::chrono::duration<float, std::milli>;

    virtual ~Pause() = default;

    /// Returns when the time of day differs by more than `time` from that of the call. Blocks the
    /// thread, or with `letEventsRun` processes events meanwhile.
    virtual void Wait(Milliseconds time, bool letEventsRun) = 0;
};

/// The real pause. The difference of the times of day counts without its sign and must be greater
/// than `time`. So a pause that spans midnight, or a change of the clock, ends early.
class SystemPause final : public Pause {
public:
    using Sleep = std::function<void(std::chrono::duration<double, std::milli> time)>;

    explicit SystemPause(const ClockOfDay& clock);
    /// For tests: `sleep` is called in place of blocking the thread for about the time given.
    SystemPause(const ClockOfDay& clock, Sleep sleep);

    void Wait(Milliseconds time, bool letEventsRun) override;

private:
    const ClockOfDay& m_clock;
    Sleep m_sleep;
};
