#pragma once

#include <QByteArray>
#include <QDateTime>

#include <array>

namespace simulator {

enum class Model : quint8 { Hct7200 = 30, Hct7300 = 31 };

/// One of the three alarm blocks as the clock stores it: 32 alarms of two bytes, and two unused
/// bytes.
struct AlarmBlock {
    static constexpr int alarmCount = 32;
    static constexpr qsizetype byteCount = 66;

    quint8 duration = 0; ///< seconds that an alarm rings
    quint8 mode = 0;     ///< 1: intermittent; from 2 on: Saturday, Sunday, holiday, vacation
    quint8 activeCountPlusOne = 1;
    QByteArray bytes = QByteArray(byteCount, '\0');

    quint8 hour(qsizetype alarm) const { return quint8(bytes[2 * alarm]) & 0x1F; }
    quint8 minute(qsizetype alarm) const { return quint8(bytes[2 * alarm + 1]) & 0x3F; }
    /// The five day bits: bits 7 to 5 of the first byte become bits 4 to 2, bits 7 and 6 of the
    /// second byte bits 1 and 0.
    quint8 dayBits(qsizetype alarm) const;
    void setAlarm(qsizetype alarm, int hour, int minute, quint8 dayBits);
    int activeAlarms() const;
};

/// The clock's programme. `days` has holidays and vacations as they are transmitted: 16 times day
/// and month, then 8 times day and month of the first and of the last day. 0/0 is an unused entry.
struct ClockProgramme {
    static constexpr qsizetype dayTableSize = 64;

    std::array<AlarmBlock, 3> blocks;
    QByteArray days = QByteArray(dayTableSize, '\0');

    bool isHoliday(QDate date) const;
    bool isVacation(QDate date) const;
    /// Whether an alarm of the block (0 to 2) rings at that moment.
    bool rings(int block, const QDateTime& moment, Model model) const;
};

/// An example: the week of a small school with lesson bells, a yard siren and evening classes.
ClockProgramme schoolProgramme(Model model);

} // namespace simulator
