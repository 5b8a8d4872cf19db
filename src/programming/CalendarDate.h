#pragma once

#include "Programme.h"

#include <QString>

/// Dates without a year, as holidays and vacation periods have them.
namespace CalendarDate {

constexpr int monthCount = 12;

/// The days of a month from 1 to 12: 29 for February, because a date applies to every year.
int daysOf(int month);
/// What is wrong with a date of which neither part is too large, as the rest of a sentence in
/// Spanish: "tiene mes y no tiene día", "el 31/02 no existe". Empty for a good or unused one.
QString faultOf(int day, int month);
/// "tiene fin y no tiene inicio", "tiene inicio y no tiene fin"; empty when it has both or none.
QString faultOf(const VacationPeriod& period);

} // namespace CalendarDate
