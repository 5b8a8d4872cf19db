#pragma once

#include "YearPicture.h"

#include <optional>

/// What clicking and dragging in the picture of the year do to a table. Nothing when there is no
/// free entry.
namespace HolidayEdits {

/// A holiday is removed, with entries of the same date; any other date takes the first free entry.
std::optional<HolidayTable> withHolidayToggled(const HolidayTable& table,
                                               const YearPicture::Date& date);
/// A period takes the first free entry. One with `from` after `to` goes over the end of the year.
std::optional<HolidayTable> withPeriodAdded(const HolidayTable& table,
                                            const YearPicture::Date& from,
                                            const YearPicture::Date& to);
HolidayTable withoutPeriod(const HolidayTable& table, int period);

} // namespace HolidayEdits
