#pragma once

#include "Programme.h"

#include <QRectF>
#include <QString>

#include <vector>

/// Where the alarms of a programme are in a picture of the week: a column for each day (and for
/// holidays and vacations, where the model has them), the time downwards from the first to the last
/// hour that has an alarm. Marks that would overlap are side by side. It shows what the programme
/// says, whatever the clock does on a holiday.
class WeekPicture {
public:
    /// An alarm on one of its days.
    struct Mark {
        /// A DayFlag.
        int column;
        /// Of the day, 0 to 1439.
        int minute;
        /// 0 to 2, and the row of the alarm, 0 to 31.
        int block;
        int row;
        /// Which of so many places side by side, from 0.
        int lane = 0;
        int lanes = 1;
        QRectF rect = {};
    };

    /// `area` is that of the columns, without captions. `markHeight` is what a time needs, in the
    /// units of the area.
    WeekPicture(const Programme& programme, ClockModel model, const QRectF& area, qreal markHeight);

    /// 5 or 9.
    int columnCount() const { return m_columns; }
    /// "Lunes", "Festivo".
    static QString columnName(int column);
    QRectF columnRect(int column) const;

    /// The hours shown: from the first to before the end, 1 to 24. Without alarms, 8 to 18.
    int firstHour() const { return m_firstHour; }
    int endHour() const { return m_endHour; }
    qreal yOfMinute(int minute) const;

    /// The least height of the area at which no more marks than outputs are side by side, as long
    /// as an hour has at most `mostMarksAnHour` of them below one another.
    qreal readableHeight(qreal markHeight) const;
    static constexpr int mostMarksAnHour = 10;

    /// By column, then time, block and row.
    const std::vector<Mark>& marks() const { return m_marks; }
    /// Null where there is none.
    const Mark* markAt(const QPointF& position) const;

private:
    void findHours();
    void addMarks(const Programme& programme);
    void placeMarks();
    /// Spreads marks of one column, of which each overlaps the next, over lanes.
    void placeGroup(std::size_t first, std::size_t end);
    qreal topOf(const Mark& mark) const;

    const int m_columns;
    const QRectF m_area;
    const qreal m_markHeight;
    int m_firstHour = 8;
    int m_endHour = 18;
    std::vector<Mark> m_marks;
};
