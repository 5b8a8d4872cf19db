#pragma once

#include "ClockModel.h"

#include <QtGlobal>

#include <array>

/// The days on which an alarm rings, in the clock's order. The HCT-7200 has the first five.
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

/// One alarm. Without any flag it is inactive and its time has no meaning.
struct Alarm {
    std::array<bool, dayFlagCount> flags{};
    /// 0 to 23.
    quint8 Hour = 0;
    /// 0 to 59.
    quint8 Minute = 0;

    bool is(DayFlag day) const { return flags[static_cast<std::size_t>(day)]; }
    void set(DayFlag day, bool on) { flags[static_cast<std::size_t>(day)] = on; }
    /// Whether all flags from Monday to Friday are set.
    bool onAllWorkingDays() const;
    void setWorkingDays(bool on);
    bool isActive() const;

    bool operator==(const Alarm&) const = default;
};

/// The alarms of one output.
struct AlarmBlock {
    static constexpr int alarmCount = 32;

    /// How long an alarm rings, 0 to 255; the simulated clock takes it as seconds.
    quint8 Duration = 0;
    /// 0 to 255. For the HCT-7300 it decides which day flags are transmitted, see AlarmEncoding.
    quint8 Mode = 0;
    std::array<Alarm, alarmCount> Alarms{};
    /// The number of active alarms plus 1: 1 to 33. NormaliseProgramme sets it.
    quint8 ActiveCountPlusOne = 0;

    bool operator==(const AlarmBlock&) const = default;
};

/// A date without a year: it applies every year. 0/0 is an unused entry.
struct Holiday {
    quint8 Day = 0;
    quint8 Month = 0;

    bool operator==(const Holiday&) const = default;
};

/// A period that applies every year. All zeros is an unused entry.
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

/// The whole programme of a clock: one block of alarms for each output, holidays and vacations.
struct Programme {
    static constexpr int blockCount = 3;

    std::array<AlarmBlock, blockCount> blocks{};
    HolidayTable table;

    bool operator==(const Programme&) const = default;
};
