#include "WeekDrawing.h"

#include "ProgrammeTexts.h"
#include "WeekMarkPainter.h"

#include <QPainter>
#include <QtMath>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int minutesOfHour = 60;

QFontMetricsF metricsOf(const QPainter& painter) { return {painter.font(), painter.device()}; }

QString timeText(int minute)
{
    Alarm alarm;
    alarm.Hour = static_cast<quint8>(minute / minutesOfHour);
    alarm.Minute = static_cast<quint8>(minute % minutesOfHour);
    return ProgrammeTexts::time(alarm);
}

/// The first hours that have a text, if not all have room for one.
int hoursALabel(const WeekPicture& picture, qreal lineHeight)
{
    const qreal anHour = picture.yOfMinute(minutesOfHour) - picture.yOfMinute(0);
    return anHour > 0 ? std::max(1, static_cast<int>(std::ceil(lineHeight / anHour))) : 1;
}

void drawHours(QPainter& painter, const WeekPicture& picture, const WeekDrawing::Look& look)
{
    const QFontMetricsF metrics = metricsOf(painter);
    const QRectF first = picture.columnRect(0);
    const QRectF last = picture.columnRect(picture.columnCount() - 1);
    const int every = hoursALabel(picture, metrics.height());
    const qreal space = metrics.averageCharWidth() / 2;
    for (int hour = picture.firstHour(); hour <= picture.endHour(); ++hour) {
        const qreal y = picture.yOfMinute(hour * minutesOfHour);
        painter.setPen(look.lines);
        painter.drawLine(QPointF(first.left(), y), QPointF(last.right(), y));
        if ((hour - picture.firstHour()) % every != 0 || hour == picture.endHour())
            continue;
        painter.setPen(look.text);
        painter.drawText(
            QRectF(0, y - metrics.height() / 2, first.left() - space, metrics.height()),
            Qt::AlignRight | Qt::AlignVCenter, timeText(hour * minutesOfHour));
    }
}

void drawColumns(QPainter& painter, const WeekPicture& picture, const WeekDrawing::Look& look)
{
    const QFontMetricsF metrics = metricsOf(painter);
    const qreal above = WeekDrawing::margins(metrics).top();
    for (int column = 0; column < picture.columnCount(); ++column) {
        const QRectF place = picture.columnRect(column);
        painter.setPen(look.lines);
        painter.drawLine(place.topLeft(), place.bottomLeft());
        if (column == picture.columnCount() - 1)
            painter.drawLine(place.topRight(), place.bottomRight());
        const QString name = WeekPicture::columnName(column);
        const bool hasRoom = metrics.horizontalAdvance(name) < place.width();
        painter.setPen(look.text);
        painter.drawText(QRectF(place.left(), place.top() - above, place.width(), above),
                         Qt::AlignCenter, hasRoom ? name : name.first(3));
    }
}

} // namespace

QColor WeekDrawing::outputColour(int block, bool isDark)
{
    // Of the Okabe-Ito palette; on a dark background its lighter colours.
    constexpr std::array<QRgb, Programme::blockCount> light{0xff0072b2, 0xffd55e00, 0xff009e73};
    constexpr std::array<QRgb, Programme::blockCount> dark{0xff56b4e9, 0xffe69f00, 0xff2fc79a};
    return QColor::fromRgb((isDark ? dark : light)[static_cast<std::size_t>(block)]);
}

QMarginsF WeekDrawing::margins(const QFontMetricsF& metrics)
{
    return {metrics.horizontalAdvance(u"00:00 "_s), metrics.height() * 1.4, 2,
            metrics.height() / 4};
}

qreal WeekDrawing::markHeight(const QFontMetricsF& metrics) { return metrics.height() + 1; }

int WeekDrawing::leastColumnWidth(const QFontMetricsF& metrics)
{
    return qCeil(Programme::blockCount * WeekMarkPainter::leastWidth(metrics));
}

void WeekDrawing::draw(QPainter& painter, const WeekPicture& picture, const Look& look)
{
    drawHours(painter, picture, look);
    drawColumns(painter, picture, look);
    WeekMarkPainter::Colours colours;
    for (int block = 0; block < Programme::blockCount; ++block)
        colours[static_cast<std::size_t>(block)] = outputColour(block, look.isDark);
    WeekMarkPainter(painter, colours, look.text, look.background).draw(picture.marks());
}

qreal WeekDrawing::drawLegend(QPainter& painter, const QPointF& position, int block,
                              const Look& look)
{
    const QFontMetricsF metrics = metricsOf(painter);
    const qreal size = metrics.ascent() * 0.8;
    QPainterPath shape;
    WeekMarkPainter::addShape(
        shape, {position.x(), position.y() + (metrics.height() - size) / 2, size, size}, block);
    painter.fillPath(shape, outputColour(block, look.isDark));
    const QString name = ProgrammeTexts::output(block);
    const qreal width = metrics.horizontalAdvance(name);
    painter.setPen(look.text);
    painter.drawText(QRectF(position.x() + size * 1.4, position.y(), width + 1, metrics.height()),
                     Qt::AlignLeft | Qt::AlignVCenter, name);
    return size * 1.4 + width + 2 * metrics.averageCharWidth();
}
