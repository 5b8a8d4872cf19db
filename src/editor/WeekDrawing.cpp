#include "WeekDrawing.h"

#include "ProgrammeTexts.h"

#include <QPainter>

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

void drawShape(QPainter& painter, const QRectF& place, int block, const QColor& colour)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    if (block == 0)
        painter.drawEllipse(place);
    else if (block == 1)
        painter.drawRect(place.adjusted(place.width() * 0.05, place.height() * 0.05,
                                        -place.width() * 0.05, -place.height() * 0.05));
    else
        painter.drawPolygon(
            QPolygonF{{place.center().x(), place.top()}, place.bottomRight(), place.bottomLeft()});
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
        painter.drawText(QRectF(0, y, first.left() - space, metrics.height()),
                         Qt::AlignRight | Qt::AlignTop, timeText(hour * minutesOfHour));
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

void drawMark(QPainter& painter, const WeekPicture::Mark& mark, const WeekDrawing::Look& look)
{
    const QFontMetricsF metrics = metricsOf(painter);
    const QRectF place = mark.rect.adjusted(1, 0.5, -1, -0.5);
    const QColor colour = WeekDrawing::outputColour(mark.block, look.isDark);
    // Nothing behind it shines through.
    painter.setPen(QPen(colour, 1));
    painter.setBrush(look.background);
    painter.drawRoundedRect(place, 3, 3);
    QColor tint = colour;
    tint.setAlphaF(0.25F);
    painter.setBrush(tint);
    painter.drawRoundedRect(place, 3, 3);

    const QString text = timeText(mark.minute);
    const qreal textWidth = metrics.horizontalAdvance(text);
    const qreal size = metrics.ascent() * 0.7;
    const qreal space = size * 0.35;
    const bool hasText = textWidth + 2 * space <= place.width();
    const bool hasShape = !hasText || size + textWidth + 3 * space <= place.width();
    if (hasShape)
        drawShape(painter, QRectF(place.left() + space, place.center().y() - size / 2, size, size),
                  mark.block, colour);
    if (!hasText)
        return;
    painter.setPen(look.text);
    painter.drawText(place.adjusted(hasShape ? size + 2 * space : space, 0, 0, 0),
                     Qt::AlignVCenter | Qt::AlignLeft | Qt::TextDontClip, text);
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

void WeekDrawing::draw(QPainter& painter, const WeekPicture& picture, const Look& look)
{
    drawHours(painter, picture, look);
    drawColumns(painter, picture, look);
    for (const WeekPicture::Mark& mark : picture.marks())
        drawMark(painter, mark, look);
}

qreal WeekDrawing::drawLegend(QPainter& painter, const QPointF& position, int block,
                              const Look& look)
{
    const QFontMetricsF metrics = metricsOf(painter);
    const qreal size = metrics.ascent() * 0.8;
    drawShape(painter,
              QRectF(position.x(), position.y() + (metrics.height() - size) / 2, size, size), block,
              outputColour(block, look.isDark));
    const QString name = ProgrammeTexts::output(block);
    const qreal width = metrics.horizontalAdvance(name);
    painter.setPen(look.text);
    painter.drawText(QRectF(position.x() + size * 1.4, position.y(), width + 1, metrics.height()),
                     Qt::AlignLeft | Qt::AlignVCenter, name);
    return size * 1.4 + width + 2 * metrics.averageCharWidth();
}
