#pragma once

#include "Programme.h"

#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

/// Where the dates of a table are in a picture of the year: a row for each month, a column for each
/// day. There is no year, because the dates apply to every year; so there are no days of the week,
/// and February has 29 days.
class YearPicture {
public:
    static constexpr int monthCount = 12;
    static constexpr int longestMonth = 31;

    /// A day of the year; both from 1.
    struct Date {
        int day;
        int month;

        bool operator==(const Date&) const = default;
        auto operator<=>(const Date& other) const
        {
            return month * 32 + day <=> other.month * 32 + other.day;
        }
    };

    /// A part of a vacation period within one month.
    struct Bar {
        /// 0 to 7.
        int period;
        int month;
        int firstDay;
        int lastDay;
        /// Whether the period begins or ends in this part.
        bool begins;
        bool ends;
        /// Which of so many bars one below the other, in the row of the month.
        int lane = 0;
        int lanes = 1;
    };

    /// `area` is that of the days, without captions.
    YearPicture(const HolidayTable& table, const QRectF& area);

    /// 29 to 31.
    static int daysOf(int month);
    /// "Enero"
    static QString monthName(int month);

    QRectF cell(const Date& date) const;
    QRectF rectOf(const Bar& bar) const;
    /// Nothing outside, and on days that a month does not have.
    std::optional<Date> dateAt(const QPointF& position) const;

    /// The first entry with this date, 0 to 15; nothing when it is no holiday.
    std::optional<int> holidayAt(const Date& date) const;
    /// The periods that contain this date, 0 to 7.
    std::vector<int> periodsAt(const Date& date) const;
    /// In the order of months. Periods that no calendar has are left out.
    const std::vector<Bar>& bars() const { return m_bars; }
    /// "1 de mayo, festivo", "24 de diciembre, vacaciones 1".
    QString describe(const Date& date) const;

private:
    void addPeriod(int period, const Date& from, const Date& to);
    void placeBars();

    const HolidayTable m_table;
    const QRectF m_area;
    std::vector<Bar> m_bars;
};
