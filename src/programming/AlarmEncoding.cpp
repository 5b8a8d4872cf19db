#include "AlarmEncoding.h"

#include "modVBINUTIL.h"

#include <algorithm>

namespace {

constexpr quint8 hourMask = 0x1F;
constexpr quint8 minuteMask = 0x3F;

quint8 bit(bool on, int number) { return on ? modVBINUTIL::BITOP_BitSet8(0, number) : quint8(0); }

bool hasBit(quint8 byte, int number) { return modVBINUTIL::BITOP_BitTest8(byte, number); }

/// Transmits Monday to Friday and nothing else, in every mode.
class Hct7200Encoding : public AlarmEncoding {
public:
    quint8 mask(const Alarm& alarm, quint8 /*mode*/) const override
    {
        return workingDayMask(alarm);
    }
    void applyMask(Alarm& alarm, quint8 mask, quint8 /*mode*/) const override
    {
        for (int day = 0; day < workingDayCount; ++day)
            alarm.flags[static_cast<std::size_t>(day)] = hasBit(mask, day);
    }

protected:
    Carried carried(const Alarm& alarm, quint8 /*mode*/) const override
    {
        Carried flags;
        std::copy_n(alarm.flags.begin(), workingDayCount, flags.begin());
        return flags;
    }
    void takeCarried(Alarm& alarm, const Carried& flags, quint8 /*mode*/) const override
    {
        std::copy(flags.begin(), flags.end(), alarm.flags.begin());
    }

    static quint8 workingDayMask(const Alarm& alarm)
    {
        quint8 mask = 0;
        for (int day = 0; day < workingDayCount; ++day)
            mask |= bit(alarm.flags[static_cast<std::size_t>(day)], day);
        return mask;
    }
};

/// Modes 0 and 1 transmit only the five working days. The other modes transmit the special days,
/// and one flag for all working days together.
class Hct7300Encoding final : public Hct7200Encoding {
public:
    quint8 mask(const Alarm& alarm, quint8 mode) const override
    {
        if (carriesSingleDays(mode))
            return workingDayMask(alarm);
        return bit(alarm.is(DayFlag::Saturday), 0) | bit(alarm.is(DayFlag::Sunday), 1) |
               bit(alarm.is(DayFlag::OnHoliday), 2) | bit(alarm.is(DayFlag::OnVacation), 3) |
               bit(alarm.onAllWorkingDays(), 4);
    }
    void applyMask(Alarm& alarm, quint8 mask, quint8 mode) const override
    {
        if (carriesSingleDays(mode)) {
            // The mask has only five bits, so this clears Saturday and Sunday. Holiday and vacation
            // flags stay as they were. This is intentional.
            for (int day = 0; day <= static_cast<int>(DayFlag::Sunday); ++day)
                alarm.flags[static_cast<std::size_t>(day)] = hasBit(mask, day);
            return;
        }
        alarm.set(DayFlag::Saturday, hasBit(mask, 0));
        alarm.set(DayFlag::Sunday, hasBit(mask, 1));
        alarm.set(DayFlag::OnHoliday, hasBit(mask, 2));
        alarm.set(DayFlag::OnVacation, hasBit(mask, 3));
        // A clear bit means only that not all five days were set: single days stay as they were.
        if (hasBit(mask, 4))
            alarm.setWorkingDays(true);
    }

protected:
    Carried carried(const Alarm& alarm, quint8 mode) const override
    {
        if (carriesSingleDays(mode))
            return Hct7200Encoding::carried(alarm, mode);
        return {alarm.is(DayFlag::Saturday), alarm.is(DayFlag::Sunday),
                alarm.is(DayFlag::OnHoliday), alarm.is(DayFlag::OnVacation),
                alarm.onAllWorkingDays()};
    }
    void takeCarried(Alarm& alarm, const Carried& flags, quint8 mode) const override
    {
        if (carriesSingleDays(mode))
            return Hct7200Encoding::takeCarried(alarm, flags, mode);
        alarm.set(DayFlag::Saturday, flags[0]);
        alarm.set(DayFlag::Sunday, flags[1]);
        alarm.set(DayFlag::OnHoliday, flags[2]);
        alarm.set(DayFlag::OnVacation, flags[3]);
        alarm.setWorkingDays(flags[4]);
    }

private:
    static bool carriesSingleDays(quint8 mode) { return mode < 2; }
};

} // namespace

const AlarmEncoding& AlarmEncoding::of(ClockModel model)
{
    static const Hct7200Encoding first;
    static const Hct7300Encoding second;
    if (model == ClockModel::Hct7200)
        return first;
    return second;
}

AlarmEncoding::Bytes AlarmEncoding::encode(const Alarm& alarm, quint8 mode) const
{
    const Carried flags = carried(alarm, mode);
    return {static_cast<quint8>((alarm.Hour & hourMask) | bit(flags[0], 7) | bit(flags[1], 6) |
                                bit(flags[2], 5)),
            static_cast<quint8>((alarm.Minute & minuteMask) | bit(flags[3], 7) | bit(flags[4], 6))};
}

Alarm AlarmEncoding::decode(Bytes bytes, quint8 mode) const
{
    Alarm alarm;
    alarm.Hour = bytes.first & hourMask;
    alarm.Minute = bytes.second & minuteMask;
    takeCarried(alarm,
                {hasBit(bytes.first, 7), hasBit(bytes.first, 6), hasBit(bytes.first, 5),
                 hasBit(bytes.second, 7), hasBit(bytes.second, 6)},
                mode);
    return alarm;
}
