#pragma once

#include "TickTimer.h"

/// Ticks that pass when the test says so.
class FakeTickTimer final : public TickTimer {
    Q_OBJECT
public:
    using TickTimer::TickTimer;

    /// One tick passes. Whether the timer was on.
    bool fire()
    {
        const bool wasEnabled = isEnabled();
        ++m_now;
        expired();
        return wasEnabled;
    }

    /// Ticks pass while no events run.
    void passUnnoticed(int ticks) { m_now += ticks; }
    /// Events run again, and the tick that is due is told.
    void notice() { expired(); }

    qint64 now() const override { return m_now; }

private:
    void arm(qint64) override {}
    void disarm() override {}

    qint64 m_now = 0;
};
