#pragma once

#include "FakeClockOfDay.h"
#include "Pause.h"

#include <QList>

/// Advances a fake clock instead of waiting.
class FakePause final : public Pause {
public:
    explicit FakePause(FakeClockOfDay& clock) : m_clock(clock) {}

    void Wait(Milliseconds time, bool letEventsRun) override
    {
        waits.append({time, letEventsRun});
        m_clock.advance(static_cast<double>(time.count()));
    }

    struct Entry {
        Milliseconds time;
        bool letEventsRun;
        bool operator==(const Entry&) const = default;
    };
    QList<Entry> waits;

private:
    FakeClockOfDay& m_clock;
};
