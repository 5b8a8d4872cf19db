#pragma once

#include "Programme.h"

#include <QList>
#include <QString>

#include <vector>

/// What can be done with rows of a block. Rows are 0 to 31. Each function gives the block as it is
/// afterwards; duration and mode stay.
namespace AlarmRows {

/// The alarms of these rows, in the order of the rows.
std::vector<Alarm> of(const AlarmBlock& block, QList<int> rows);

AlarmBlock cleared(const AlarmBlock& block, const QList<int>& rows);
/// Active alarms come first, in the order of their times. The others follow as they were.
AlarmBlock sorted(const AlarmBlock& block);

struct Placed {
    AlarmBlock block;
    /// The rows that have taken an alarm, in the order of the alarms.
    QList<int> rows;
    /// How many of the last alarms found no row.
    int leftOut = 0;

    /// "Falta sitio para 3 avisos."; empty when all found a row.
    QString problem() const;
};
/// Over what these rows and those below them hold.
Placed pasted(const AlarmBlock& block, int firstRow, const std::vector<Alarm>& alarms);
/// Before this row. Those below move down, into rows that are not active.
Placed inserted(const AlarmBlock& block, int row, const std::vector<Alarm>& alarms);
/// Into rows that are not active, from the first on.
Placed filledIn(const AlarmBlock& block, const std::vector<Alarm>& alarms);

} // namespace AlarmRows
