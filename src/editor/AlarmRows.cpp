#include "AlarmRows.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace AlarmRows {

namespace {

Alarm& rowOf(AlarmBlock& block, int row) { return block.Alarms[static_cast<std::size_t>(row)]; }

int timeOf(const Alarm& alarm) { return alarm.Hour * 60 + alarm.Minute; }

/// The first row from `row` on that is not active; alarmCount when there is none.
int firstFreeRow(const AlarmBlock& block, int row)
{
    const auto found = std::find_if(block.Alarms.begin() + row, block.Alarms.end(),
                                    [](const Alarm& alarm) { return !alarm.isActive(); });
    return static_cast<int>(found - block.Alarms.begin());
}

} // namespace

std::vector<Alarm> of(const AlarmBlock& block, QList<int> rows)
{
    std::sort(rows.begin(), rows.end());
    std::vector<Alarm> alarms;
    for (const int row : std::as_const(rows))
        alarms.push_back(block.Alarms[static_cast<std::size_t>(row)]);
    return alarms;
}

AlarmBlock cleared(const AlarmBlock& block, const QList<int>& rows)
{
    AlarmBlock changed = block;
    for (const int row : rows)
        rowOf(changed, row) = {};
    return changed;
}

AlarmBlock sorted(const AlarmBlock& block)
{
    AlarmBlock changed = block;
    const auto inactive =
        std::stable_partition(changed.Alarms.begin(), changed.Alarms.end(),
                              [](const Alarm& alarm) { return alarm.isActive(); });
    std::stable_sort(changed.Alarms.begin(), inactive, [](const Alarm& one, const Alarm& other) {
        return timeOf(one) < timeOf(other);
    });
    return changed;
}

QString Placed::problem() const
{
    if (leftOut == 0)
        return {};
    return leftOut == 1 ? u"Falta sitio para un aviso."_s
                        : u"Falta sitio para %1 avisos."_s.arg(leftOut);
}

Placed pasted(const AlarmBlock& block, int firstRow, const std::vector<Alarm>& alarms)
{
    Placed placed{block, {}, 0};
    int row = firstRow;
    for (const Alarm& alarm : alarms) {
        if (row == AlarmBlock::alarmCount) {
            ++placed.leftOut;
            continue;
        }
        rowOf(placed.block, row) = alarm;
        placed.rows.append(row++);
    }
    return placed;
}

Placed inserted(const AlarmBlock& block, int row, const std::vector<Alarm>& alarms)
{
    Placed placed{block, {}, 0};
    for (const Alarm& alarm : alarms) {
        const int free =
            row < AlarmBlock::alarmCount ? firstFreeRow(placed.block, row) : AlarmBlock::alarmCount;
        if (free == AlarmBlock::alarmCount) {
            ++placed.leftOut;
            continue;
        }
        auto& rows = placed.block.Alarms;
        std::move_backward(rows.begin() + row, rows.begin() + free, rows.begin() + free + 1);
        rowOf(placed.block, row) = alarm;
        placed.rows.append(row++);
    }
    return placed;
}

Placed filledIn(const AlarmBlock& block, const std::vector<Alarm>& alarms)
{
    Placed placed{block, {}, 0};
    int row = 0;
    for (const Alarm& alarm : alarms) {
        row = firstFreeRow(placed.block, row);
        if (row == AlarmBlock::alarmCount) {
            ++placed.leftOut;
            continue;
        }
        rowOf(placed.block, row) = alarm;
        placed.rows.append(row++);
    }
    return placed;
}

} // namespace AlarmRows
