#pragma once

#include "Programme.h"

#include <QList>
#include <QString>

/// What distinguishes two programmes as the clock obeys them. The order of rows, rows without days,
/// unused dates and dates entered twice make no difference. Flags that a block's mode does not
/// transmit are ignored, see AlarmEncoding. Durations and modes are compared for the HCT-7300 only:
/// the HCT-7200 keeps its own, whatever is sent.
namespace ProgrammeDifference {

struct Entry {
    enum class Kind { Added, Removed, Changed };
    enum class What { Duration, Mode, Alarm, Holiday, Vacation };

    Kind kind;
    What what;
    /// 0 to 2; -1 for holidays and vacations.
    int block;
    /// The rows of the alarm, holiday or period in the first and in the second programme; -1 where
    /// there is none.
    int rowBefore;
    int rowAfter;
    /// One line for the operator, in Spanish: "Salida 1: añadido 9:05 lunes a viernes".
    QString text;
};

/// By block: duration, mode, then alarms in the order of their times; then holidays and vacations
/// in the order of the calendar. Of two alarms at one time those with the same days are paired
/// first.
QList<Entry> between(const Programme& before, const Programme& after, ClockModel model);

} // namespace ProgrammeDifference
