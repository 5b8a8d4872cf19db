#pragma once

#include "WallLists.h"
#include "WeekPicture.h"

#include <QPageLayout>
#include <QRectF>
#include <QString>

class QPagedPaintDevice;
class QPainter;

/// A programme as a sheet of paper for the wall: its title, the week as a picture, the times of
/// each output, holidays and vacation periods. It is one page; on small paper the lists are a
/// second one. All lengths are in points (1/72 inch).
class WallSheet {
public:
    WallSheet(const Programme& programme, ClockModel model, const QString& title);

    /// A4 and its margins.
    static QPageLayout paper();

    /// Paints all pages with the device's paper and margins; whether the device took them.
    bool paint(QPagedPaintDevice& device) const;
    /// Replaces the file whole or not at all; why it could not be written, in Spanish, or empty.
    QString writePdf(const QString& path, const QPageLayout& layout = paper()) const;

    /// `area` is that within the margins.
    int pageCount(const QSizeF& area) const;
    /// `page` is 0 or 1.
    void paintPage(QPainter& painter, const QRectF& area, int page) const;

private:
    struct Week {
        WeekPicture picture;
        /// Whether every mark has room for its time and shape.
        bool haveRoom;
    };

    /// The area that is left below.
    QRectF paintTitle(QPainter& painter, const QRectF& area) const;
    void paintWeek(QPainter& painter, const QRectF& area) const;
    Week weekIn(const QRectF& area, int textSize) const;

    const Programme m_programme;
    const ClockModel m_model;
    const QString m_title;
    const WallLists m_lists;
};
