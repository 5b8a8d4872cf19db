#include "Programme.h"

#include <algorithm>

bool Alarm::onAllWorkingDays() const
{
    return std::all_of(flags.begin(), flags.begin() + workingDayCount, [](bool on) { return on; });
}

void Alarm::setWorkingDays(bool on) { std::fill_n(flags.begin(), workingDayCount, on); }

bool Alarm::isActive() const
{
    return std::any_of(flags.begin(), flags.end(), [](bool on) { return on; });
}
