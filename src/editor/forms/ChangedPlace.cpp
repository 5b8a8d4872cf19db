#include "ChangedPlace.h"

namespace {

template<typename List>
std::optional<int> firstDifference(const List& before, const List& after)
{
    for (std::size_t index = 0; index < before.size(); ++index)
        if (before[index] != after[index])
            return static_cast<int>(index);
    return std::nullopt;
}

} // namespace

std::optional<RowList::Target> changedPlace(const Programme& before, const Programme& after)
{
    using Place = ProgrammeMarks::Place;
    if (const auto block = firstDifference(before.blocks, after.blocks)) {
        const auto index = static_cast<std::size_t>(*block);
        const auto row = firstDifference(before.blocks[index].Alarms, after.blocks[index].Alarms);
        return RowList::Target{Place::Alarm, *block, row.value_or(0)};
    }
    if (const auto row = firstDifference(before.table.holidays, after.table.holidays))
        return RowList::Target{Place::Holiday, -1, *row};
    if (const auto row = firstDifference(before.table.vacations, after.table.vacations))
        return RowList::Target{Place::Vacation, -1, *row};
    return std::nullopt;
}
