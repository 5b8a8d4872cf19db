#pragma once

#include "Programme.h"

#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

/// What the sheet for the wall says in words: a list of each output with the times of its active
/// alarms, holidays and vacation periods. All lengths are in points.
class WallLists {
public:
    WallLists(const Programme& programme, ClockModel model);

    /// What the lists need in this width.
    qreal height(qreal width) const;
    void paint(QPainter& painter, const QRectF& area) const;

private:
    struct Line {
        QString time;
        QString days;
    };
    struct Column {
        /// Duration and mode, where the programme decides them.
        QString note;
        std::vector<Line> lines;
    };

    /// The largest size of letters with which all columns have room.
    int textSize(qreal width) const;
    bool daysFit(int textSize, qreal columnWidth) const;
    qreal columnsHeight(int textSize) const;
    void paintColumn(QPainter& painter, const QRectF& area, int block, int textSize) const;

    std::vector<Column> m_columns;
    /// "Festivos: 01/05, 12/10"
    QString m_holidays;
    QString m_vacations;
};
