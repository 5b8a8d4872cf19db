#pragma once

#include <QByteArray>
#include <QDateTime>

#include <array>

namespace simulator {

enum class Model : quint8 { Hct7200 = 30, Hct7300 = 31 };

/// One of the three alarm blocks as the clock keeps it: 32 alarms of two bytes and two bytes that
/// no one uses.
struct AlarmBlock {
    static constexpr int alarmCount = 32;
    static constexpr qsizetype byteCount = 66;

    quint8 duration = 0; ///< seconds that an alarm rings
    quint8 mode = 0;     ///< 1: intermittent; 2 and above: Saturday, Sunday, holiday, vacation
    quint8 activeCountPlusOne = 1;
    QByteArray bytes = QByteArray(byteCount, '\0');

    quint8 hour(int alarm) const { return quint8(bytes[2 * alarm]) & 0x1F; }
    quint8 minute(int alarm) const { return quint8(bytes[2 * alarm + 1]) & 0x3F; }
    /// The day bits: 7 to 5 from the first byte in bits 4 to 2, 7 and 6 from the second in 1 and 0.
    quint8 dayBits(int alarm) const;
    void setAlarm(int alarm, int hour, int minute, quint8 dayBits);
    int activeAlarms() const;
};

/// What the clock rings by. Holidays and vacations stay in the layout that travels: 16 times day
/// and month, then 8 times day and month of the first and of the last day; 0/0 is unused.
struct ClockProgramme {
    static constexpr qsizetype dayTableSize = 64;

    std::array<AlarmBlock, 3> blocks;
    QByteArray days = QByteArray(dayTableSize, '\0');

    bool isHoliday(QDate date) const;
    bool isVacation(QDate date) const;
    /// Whether the block's bell sounds at that moment.
    bool rings(int block, const QDateTime& moment, Model model) const;
};

/// The week of a small school: lesson bells, the yard's siren, the evening classes.
ClockProgramme schoolProgramme(Model model);

} // namespace simulator
