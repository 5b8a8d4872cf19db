#pragma once

#include "IntervalTimer.h"

/// A timer that ticks when the test says so.
class FakeTimer final : public IntervalTimer {
    Q_OBJECT
public:
    using IntervalTimer::IntervalTimer;
    using IntervalTimer::isRunning;

    /// One tick, if it is running.
    bool fire()
    {
        if (!isRunning())
            return false;
        emit tick();
        return true;
    }

    int timesEnabled = 0;

private:
    void intervalChanged() override {}
    void enabledChanged() override { timesEnabled += isEnabled() ? 1 : 0; }
};
