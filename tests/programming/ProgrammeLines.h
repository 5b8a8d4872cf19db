#pragma once

#include "ProgrammeSamples.h"

#include <QByteArrayList>

/// The lines of a file: headers, and zeros that a test may replace.
class ProgrammeLines {
public:
    ProgrammeLines()
    {
        for (int block = 1; block <= 3; ++block) {
            all.append("--AVISOS " + QByteArray::number(block) + "--");
            all.append(QByteArrayList(98, "0"));
        }
        all.append("--FESTIVOS--");
        all.append(QByteArrayList(32, "0"));
        all.append("--PERIODOS VACACIONALES--");
        all.append(QByteArrayList(32, "0"));
    }
    /// 0 Duration, 1 Mode.
    QByteArray& block(int number, int field) { return all[99 * number + 1 + field]; }
    /// 0 Hour, 1 Minute, 2 mask.
    QByteArray& alarm(int number, int index, int field)
    {
        return all[99 * number + 3 + 3 * index + field];
    }
    QByteArray& holiday(int index, int field) { return all[298 + 2 * index + field]; }
    QByteArray& vacation(int index, int field) { return all[331 + 4 * index + field]; }
    QByteArray text(const QByteArray& end = "\r\n") const { return all.join(end) + end; }

    QByteArrayList all;
};

/// A file whose only alarm is at this hour on Mondays.
inline QByteArray fileWithHour(const char* hour)
{
    ProgrammeLines lines;
    lines.alarm(0, 0, 0) = hour;
    lines.alarm(0, 0, 2) = "1";
    return lines.text();
}

/// A programme in which every value of the file is 9, which tests do not use themselves.
inline Programme allNines(ClockModel model)
{
    using enum DayFlag;
    Programme programme;
    for (AlarmBlock& block : programme.blocks) {
        block.Duration = 9;
        block.Mode = 1;
        block.Alarms.fill(model == ClockModel::Hct7200
                              ? samples::alarm(9, 9, {Monday, Thursday})
                              : samples::alarm(9, 9, {Monday, Thursday, OnHoliday}));
    }
    programme.table.holidays.fill({9, 9});
    programme.table.vacations.fill({9, 9, 9, 9});
    return programme;
}
