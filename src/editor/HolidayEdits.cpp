#include "HolidayEdits.h"

#include <algorithm>

namespace HolidayEdits {

std::optional<HolidayTable> withHolidayToggled(const HolidayTable& table,
                                               const YearPicture::Date& date)
{
    HolidayTable changed = table;
    auto& holidays = changed.holidays;
    const Holiday holiday{static_cast<quint8>(date.day), static_cast<quint8>(date.month)};
    if (std::find(holidays.begin(), holidays.end(), holiday) != holidays.end()) {
        std::replace(holidays.begin(), holidays.end(), holiday, Holiday());
        return changed;
    }
    const auto free = std::find(holidays.begin(), holidays.end(), Holiday());
    if (free == holidays.end())
        return std::nullopt;
    *free = holiday;
    return changed;
}

std::optional<HolidayTable> withPeriodAdded(const HolidayTable& table,
                                            const YearPicture::Date& from,
                                            const YearPicture::Date& to)
{
    HolidayTable changed = table;
    auto& periods = changed.vacations;
    const auto free = std::find(periods.begin(), periods.end(), VacationPeriod());
    if (free == periods.end())
        return std::nullopt;
    *free = {static_cast<quint8>(from.day), static_cast<quint8>(from.month),
             static_cast<quint8>(to.day), static_cast<quint8>(to.month)};
    return changed;
}

HolidayTable withoutPeriod(const HolidayTable& table, int period)
{
    HolidayTable changed = table;
    changed.vacations[static_cast<std::size_t>(period)] = {};
    return changed;
}

} // namespace HolidayEdits
