#pragma once

#include "ClockModel.h"

#include <QtGlobal>

#include <array>

/// When an alarm rings, in the order of the clock's own record. The HCT-7200 has the first five.
enum class DayFlag {
    Monday,
    Tuesday,
    Wednesday,
    Thursday,
    Friday,
    Saturday,
    Sunday,
    OnHoliday,
    OnVacation
};

constexpr int dayFlagCount = 9;
constexpr int workingDayCount = 5;
/// How many flags an alarm of this model has: 5 or 9.
constexpr int dayFlagsOf(ClockModel model)
{
    return model == ClockModel::Hct7200 ? workingDayCount : dayFlagCount;
}

/// One ring. Without any flag it is inactive and its time means nothing.
struct Alarm {
    std::array<bool, dayFlagCount> flags{};
    /// 0 to 23.
    quint8 Hour = 0;
    /// 0 to 59.
    quint8 Minute = 0;

    bool is(DayFlag day) const { return flags[static_cast<std::size_t>(day)]; }
    void set(DayFlag day, bool on) { flags[static_cast<std::size_t>(day)] = on; }
    /// All of Monday to Friday.
    bool onAllWorkingDays() const;
    void setWorkingDays(bool on);
    bool isActive() const;

    bool operator==(const Alarm&) const = default;
};

/// The alarms of one output.
struct AlarmBlock {
    static constexpr int alarmCount = 32;

    quint8 Duration = 0;
    quint8 Mode = 0;
    std::array<Alarm, alarmCount> Alarms{};
    /// Set by NormaliseProgramme: 1 to 33.
    quint8 ActiveCountPlusOne = 0;

    bool operator==(const AlarmBlock&) const = default;
};

/// A date without a year: it recurs. 0/0 is unused.
struct Holiday {
    quint8 Day = 0;
    quint8 Month = 0;

    bool operator==(const Holiday&) const = default;
};

/// Recurs every year like a holiday; all zeros is unused.
struct VacationPeriod {
    quint8 StartDay = 0;
    quint8 StartMonth = 0;
    quint8 EndDay = 0;
    quint8 EndMonth = 0;

    bool operator==(const VacationPeriod&) const = default;
};

struct HolidayTable {
    static constexpr int holidayCount = 16;
    static constexpr int vacationCount = 8;

    std::array<Holiday, holidayCount> holidays{};
    std::array<VacationPeriod, vacationCount> vacations{};

    bool operator==(const HolidayTable&) const = default;
};

/// All that a clock rings by.
struct Programme {
    static constexpr int blockCount = 3;

    std::array<AlarmBlock, blockCount> blocks{};
    HolidayTable table;

    bool operator==(const Programme&) const = default;
};
