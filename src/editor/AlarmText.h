#pragma once

#include "Programme.h"

#include <QString>
#include <QStringList>

#include <vector>

/// Alarms as text for the clipboard: a line for each, its time and its days separated by a tab, as
/// spreadsheets exchange cells.
namespace AlarmText {

/// "9:05\tlunes a viernes\n"; the second cell of an alarm without days is empty.
QString text(const std::vector<Alarm>& alarms);

struct Alarms {
    std::vector<Alarm> alarms;
    /// What could not be taken, one sentence for each, in Spanish.
    QStringList problems;
};

/// Reads what text() writes, and what spreadsheets have. Times: "9:05", "09.05", "9:05:00",
/// "9h05", "9:05 PM". Days, in one cell or in several: "Lun Mar", "lunes a viernes", "L-V",
/// "LMXJV", "laborables"; or marks such as x and 1 in a column for each day from Monday on. A line
/// with "Hora" and names of days says which column is which day. Cells before the time and empty
/// lines are passed over.
Alarms parse(const QString& text, ClockModel model);

} // namespace AlarmText
