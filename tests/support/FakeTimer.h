#pragma once

#include "IntervalTimer.h"

/// A timer that ticks when the test says so.
class FakeTimer final : public IntervalTimer {
    Q_OBJECT
public:
    using IntervalTimer::IntervalTimer;

    void setInterval(int milliseconds) override { m_interval = milliseconds; }
    int interval() const override { return m_interval; }
    void setEnabled(bool enabled) override
    {
        m_enabled = enabled;
        if (enabled)
            ++timesEnabled;
    }
    bool isEnabled() const override { return m_enabled; }

    bool isRunning() const { return m_enabled && m_interval > 0; }
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
    int m_interval = 0;
    bool m_enabled = false;
};
