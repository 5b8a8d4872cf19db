#include "WeekMarkPainter.h"

#include "ProgrammeTexts.h"

#include <QFontMetricsF>
#include <QPainter>

namespace {

/// A part of a colour before a background. Transparency would cost time.
QColor tintOf(const QColor& colour, const QColor& background)
{
    constexpr qreal part = 0.25;
    const auto mix = [](int over, int under) { return qRound(part * over + (1 - part) * under); };
    return {mix(colour.red(), background.red()), mix(colour.green(), background.green()),
            mix(colour.blue(), background.blue())};
}

QRectF placeOf(const WeekPicture::Mark& mark) { return mark.rect.adjusted(1, 0.5, -1, -0.5); }

} // namespace

WeekMarkPainter::WeekMarkPainter(QPainter& painter, const Colours& colours, const QColor& text,
                                 const QColor& background)
    : m_painter(painter),
      m_colours(colours),
      m_text(text),
      m_shapeSize(QFontMetricsF(painter.font(), painter.device()).ascent() * 0.7)
{
    for (std::size_t block = 0; block < colours.size(); ++block)
        m_tints[block] = tintOf(colours[block], background);
}

void WeekMarkPainter::draw(const std::vector<WeekPicture::Mark>& marks)
{
    m_painter.save();
    // Straight edges are sharp without it, and filled many times faster.
    m_painter.setRenderHint(QPainter::Antialiasing, false);
    for (const WeekPicture::Mark& mark : marks)
        drawFrame(mark);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setPen(m_text);
    for (const WeekPicture::Mark& mark : marks)
        drawInside(mark);
    for (std::size_t block = 0; block < m_shapes.size(); ++block)
        m_painter.fillPath(m_shapes[block], m_colours[block]);
    m_painter.restore();
}

void WeekMarkPainter::addShape(QPainterPath& path, const QRectF& place, int block)
{
    const qreal inset = place.width() * 0.05;
    switch (block) {
    case 0: path.addEllipse(place); break;
    case 1: path.addRect(place.adjusted(inset, inset, -inset, -inset)); break;
    default:
        path.moveTo(place.center().x(), place.top());
        path.lineTo(place.bottomRight());
        path.lineTo(place.bottomLeft());
        path.closeSubpath();
    }
}

void WeekMarkPainter::drawFrame(const WeekPicture::Mark& mark)
{
    const auto block = static_cast<std::size_t>(mark.block);
    const QRectF place = placeOf(mark);
    m_painter.fillRect(place, m_colours[block]);
    m_painter.fillRect(place.adjusted(1, 1, -1, -1), m_tints[block]);
}

void WeekMarkPainter::drawInside(const WeekPicture::Mark& mark)
{
    const QRectF place = placeOf(mark);
    const QStaticText& text = textOf(mark.minute);
    const QSizeF size = text.size();
    const qreal space = m_shapeSize * 0.35;
    const bool hasText = size.width() + space <= place.width();
    const bool hasShape = !hasText || m_shapeSize + size.width() + 3 * space <= place.width();
    const qreal shapeWidth = hasShape ? m_shapeSize + space : 0;
    if (hasShape)
        addShape(m_shapes[static_cast<std::size_t>(mark.block)],
                 QRectF(place.left() + space, place.center().y() - m_shapeSize / 2, m_shapeSize,
                        m_shapeSize),
                 mark.block);
    if (hasText)
        m_painter.drawStaticText(
            QPointF(place.left() + shapeWidth + (place.width() - shapeWidth - size.width()) / 2,
                    place.center().y() - size.height() / 2),
            text);
}

const QStaticText& WeekMarkPainter::textOf(int minute)
{
    QStaticText& text = m_texts[minute];
    if (text.text().isEmpty()) {
        Alarm alarm;
        alarm.Hour = static_cast<quint8>(minute / 60);
        alarm.Minute = static_cast<quint8>(minute % 60);
        text.setTextFormat(Qt::PlainText);
        text.setText(ProgrammeTexts::time(alarm));
        text.prepare(m_painter.transform(), m_painter.font());
    }
    return text;
}
