#include "YearPicture.h"

#include "CalendarDate.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

using Date = YearPicture::Date;

constexpr Date firstOfYear{1, 1};
constexpr Date lastOfYear{31, 12};

Date startOf(const VacationPeriod& period) { return {period.StartDay, period.StartMonth}; }
Date endOf(const VacationPeriod& period) { return {period.EndDay, period.EndMonth}; }

bool exists(const Date& date)
{
    return date.day > 0 && date.month > 0 && CalendarDate::faultOf(date.day, date.month).isEmpty();
}

/// A period that ends before it begins goes over the end of the year.
bool contains(const VacationPeriod& period, const Date& date)
{
    const Date start = startOf(period);
    const Date end = endOf(period);
    if (!exists(start) || !exists(end))
        return false;
    return start <= end ? start <= date && date <= end : start <= date || date <= end;
}

} // namespace

YearPicture::YearPicture(const HolidayTable& table, const QRectF& area)
    : m_table(table), m_area(area)
{
    for (int index = 0; index < HolidayTable::vacationCount; ++index) {
        const VacationPeriod& period = m_table.vacations[static_cast<std::size_t>(index)];
        const Date start = startOf(period);
        const Date end = endOf(period);
        if (!exists(start) || !exists(end))
            continue;
        if (start <= end) {
            addPeriod(index, start, end);
            continue;
        }
        addPeriod(index, firstOfYear, end);
        addPeriod(index, start, lastOfYear);
    }
    std::stable_sort(m_bars.begin(), m_bars.end(),
                     [](const Bar& one, const Bar& other) { return one.month < other.month; });
    placeBars();
}

int YearPicture::daysOf(int month) { return CalendarDate::daysOf(month); }

QString YearPicture::monthName(int month)
{
    constexpr std::array<const char16_t*, monthCount> names{
        u"Enero", u"Febrero", u"Marzo",      u"Abril",   u"Mayo",      u"Junio",
        u"Julio", u"Agosto",  u"Septiembre", u"Octubre", u"Noviembre", u"Diciembre"};
    return QString::fromUtf16(names[static_cast<std::size_t>(month - 1)]);
}

QRectF YearPicture::cell(const Date& date) const
{
    const qreal width = m_area.width() / longestMonth;
    const qreal height = m_area.height() / monthCount;
    return {m_area.left() + (date.day - 1) * width, m_area.top() + (date.month - 1) * height, width,
            height};
}

QRectF YearPicture::rectOf(const Bar& bar) const
{
    const QRectF days = cell({bar.firstDay, bar.month}) | cell({bar.lastDay, bar.month});
    // The upper half of a row is for the numbers of the days.
    const qreal height = days.height() / 2 / bar.lanes;
    return {days.left(), days.center().y() + bar.lane * height, days.width(), height};
}

std::optional<YearPicture::Date> YearPicture::dateAt(const QPointF& position) const
{
    if (!m_area.contains(position))
        return std::nullopt;
    const QPointF inside = position - m_area.topLeft();
    // On the right and lower edge is the last day and month.
    const int column = static_cast<int>(inside.x() / m_area.width() * longestMonth);
    const int row = static_cast<int>(inside.y() / m_area.height() * monthCount);
    const Date date{std::min(column + 1, longestMonth), std::min(row + 1, monthCount)};
    return exists(date) ? std::optional(date) : std::nullopt;
}

std::optional<int> YearPicture::holidayAt(const Date& date) const
{
    const auto found =
        std::find_if(m_table.holidays.begin(), m_table.holidays.end(), [&](const Holiday& holiday) {
            return holiday.Day == date.day && holiday.Month == date.month;
        });
    if (found == m_table.holidays.end())
        return std::nullopt;
    return static_cast<int>(found - m_table.holidays.begin());
}

std::vector<int> YearPicture::periodsAt(const Date& date) const
{
    std::vector<int> found;
    for (int index = 0; index < HolidayTable::vacationCount; ++index)
        if (contains(m_table.vacations[static_cast<std::size_t>(index)], date))
            found.push_back(index);
    return found;
}

QString YearPicture::describe(const Date& date) const
{
    QStringList parts{u"%1 de %2"_s.arg(date.day).arg(monthName(date.month).toLower())};
    if (holidayAt(date))
        parts.append(u"festivo"_s);
    for (const int period : periodsAt(date))
        parts.append(u"vacaciones %1"_s.arg(period + 1));
    return parts.join(u", "_s);
}

void YearPicture::addPeriod(int period, const Date& from, const Date& to)
{
    const VacationPeriod& whole = m_table.vacations[static_cast<std::size_t>(period)];
    for (int month = from.month; month <= to.month; ++month) {
        const int firstDay = month == from.month ? from.day : 1;
        const int lastDay = month == to.month ? to.day : daysOf(month);
        m_bars.push_back({period, month, firstDay, lastDay, startOf(whole) == Date{firstDay, month},
                          endOf(whole) == Date{lastDay, month}});
    }
}

void YearPicture::placeBars()
{
    for (auto first = m_bars.begin(); first != m_bars.end();) {
        const auto end = std::find_if(first, m_bars.end(),
                                      [&](const Bar& bar) { return bar.month != first->month; });
        std::vector<int> lastDays;
        for (auto bar = first; bar != end; ++bar) {
            const auto free = std::find_if(lastDays.begin(), lastDays.end(),
                                           [&](int day) { return day < bar->firstDay; });
            bar->lane = static_cast<int>(free - lastDays.begin());
            if (free == lastDays.end())
                lastDays.push_back(bar->lastDay);
            else
                *free = bar->lastDay;
        }
        for (auto bar = first; bar != end; ++bar)
            bar->lanes = static_cast<int>(lastDays.size());
        first = end;
    }
}
