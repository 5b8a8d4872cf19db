#include "CalendarDate.h"

#include "ProgrammeTexts.h"

#include <array>

using namespace Qt::StringLiterals;

namespace CalendarDate {

int daysOf(int month)
{
    constexpr std::array<int, monthCount> lengths{31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return lengths[static_cast<std::size_t>(month - 1)];
}

QString faultOf(int day, int month)
{
    if (day == 0 && month == 0)
        return {};
    if (day == 0)
        return u"tiene mes y no tiene día"_s;
    if (month == 0)
        return u"tiene día y no tiene mes"_s;
    return day <= daysOf(month) ? QString()
                                : u"el %1 no existe"_s.arg(ProgrammeTexts::date(day, month));
}

QString faultOf(const VacationPeriod& period)
{
    const bool hasStart = period.StartDay != 0 || period.StartMonth != 0;
    const bool hasEnd = period.EndDay != 0 || period.EndMonth != 0;
    if (hasStart == hasEnd)
        return {};
    return hasEnd ? u"tiene fin y no tiene inicio"_s : u"tiene inicio y no tiene fin"_s;
}

} // namespace CalendarDate
