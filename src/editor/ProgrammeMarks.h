#pragma once

#include "Programme.h"

#include <QList>
#include <QString>

/// What is wrong with a programme, by row: alarms at the same time, days that the mode forbids,
/// dates that no calendar has, dates and periods that are half set. Saving is allowed all the same.
class ProgrammeMarks {
public:
    enum class Place { Alarm, Holiday, Vacation };

    struct Mark {
        Place place;
        /// 0 to 2; -1 for holidays and vacation periods.
        int block;
        /// 0 to 31, 15 or 7.
        int row;
        /// One or more sentences for the operator, in Spanish.
        QString reason;
    };

    ProgrammeMarks(const Programme& programme, ClockModel model);

    /// One for each row with something wrong: by block and row; then holidays, then vacations.
    const QList<Mark>& all() const { return m_marks; }
    /// Empty when nothing is wrong with this row.
    QString reasonOf(Place place, int block, int row) const;
    QString alarmReason(int block, int row) const { return reasonOf(Place::Alarm, block, row); }
    QString holidayReason(int row) const { return reasonOf(Place::Holiday, -1, row); }
    QString vacationReason(int row) const { return reasonOf(Place::Vacation, -1, row); }
    /// How many rows are marked.
    qsizetype count() const { return m_marks.size(); }
    /// "Sin problemas", "1 problema", "3 problemas".
    QString countText() const;
    /// "Salida 1, aviso 3", "Festivo 2", "Período de vacaciones 1".
    static QString nameOf(const Mark& mark);

private:
    void addAlarms(const Programme& programme, ClockModel model);
    void addDates(const HolidayTable& table);

    QList<Mark> m_marks;
};
