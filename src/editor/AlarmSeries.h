#pragma once

#include "AlarmRows.h"

#include <QStringList>

#include <array>
#include <vector>

/// Alarms at regular times: "first at 9:00, every 55 minutes, 6 times, a break of 25 minutes after
/// the third", which is at 9:00, 9:55, 10:50, 12:10, 13:05 and 14:00.
struct AlarmSeries {
    /// Of the day, 0 to 1439.
    int firstMinute = 0;
    /// Minutes from one to the next, 1 to 1439.
    int every = 55;
    /// 1 to 32.
    int count = 1;
    /// Minutes, 0 to 1439, added to the time between the alarm number `breakAfter` (from 1) and the
    /// next.
    int breakMinutes = 0;
    int breakAfter = 0;
    std::array<bool, dayFlagCount> days{};

    /// Those of the same day; `count` at most.
    std::vector<Alarm> alarms() const;

    struct Plan {
        AlarmRows::Placed placed;
        /// What is not in the block, and why, one sentence each, in Spanish: alarms after midnight,
        /// at a time that an active alarm of the block has, and without a row.
        QStringList problems;
    };
    /// Fills rows that are not active.
    Plan into(const AlarmBlock& block) const;
};
