#include "WeekMarkPainter.h"

#include "ProgrammeTexts.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace {

/// A part of a colour before a background. Transparency would cost time.
QColor tintOf(const QColor& colour, const QColor& background)
{
    constexpr qreal part = 0.25;
    const auto mix = [](int over, int under) { return qRound(part * over + (1 - part) * under); };
    return {mix(colour.red(), background.red()), mix(colour.green(), background.green()),
            mix(colour.blue(), background.blue())};
}

constexpr qreal frameMargin = 1;
/// Of the font's ascent.
constexpr qreal shapePart = 0.7;
constexpr qreal smallShapePart = 0.5;
constexpr qreal smallSpacePart = 0.15;
constexpr qreal smallTextPart = 0.78;

QRectF placeOf(const WeekPicture::Mark& mark)
{
    return mark.rect.adjusted(frameMargin, 0.5, -frameMargin, -0.5);
}

QFont smallFont(QFont font)
{
    // On paper a font has a size in pixels.
    if (font.pixelSize() > 0)
        font.setPixelSize(qRound(font.pixelSize() * smallTextPart));
    else
        font.setPointSizeF(font.pointSizeF() * smallTextPart);
    return font;
}

} // namespace

WeekMarkPainter::WeekMarkPainter(QPainter& painter, const Colours& colours, const QColor& text,
                                 const QColor& background)
    : m_painter(painter),
      m_colours(colours),
      m_text(text),
      m_ascent(QFontMetricsF(painter.font(), painter.device()).ascent()),
      m_texts{painter.font(), {}, {}},
      m_smallTexts{smallFont(painter.font()), {}, {}}
{
    for (std::size_t block = 0; block < colours.size(); ++block)
        m_tints[block] = tintOf(colours[block], background);
}

qreal WeekMarkPainter::leastWidth(const QFontMetricsF& metrics)
{
    const qreal text = metrics.horizontalAdvance(QStringLiteral("00:00")) * smallTextPart;
    const qreal shape = metrics.ascent() * (smallShapePart + 3 * smallSpacePart);
    return std::ceil(text + shape) + 2 * frameMargin;
}

void WeekMarkPainter::draw(const std::vector<WeekPicture::Mark>& marks)
{
    m_painter.save();
    // Straight edges are sharp without it, and filled many times faster. On paper that is shown
    // smaller than it is they would get lost.
    m_painter.setRenderHint(QPainter::Antialiasing,
                            m_painter.transform().type() > QTransform::TxTranslate);
    for (const WeekPicture::Mark& mark : marks)
        drawFrame(mark);
    m_painter.setRenderHint(QPainter::Antialiasing);
    for (const WeekPicture::Mark& mark : marks)
        drawInside(mark);
    m_painter.setPen(m_text);
    drawTexts(m_texts);
    drawTexts(m_smallTexts);
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
    const qreal shape = m_ascent * shapePart;
    const qreal smallShape = m_ascent * smallShapePart;
    const qreal smallSpace = m_ascent * smallSpacePart;
    for (const Inside& inside :
         {Inside{m_texts, shape, shape / 3}, Inside{m_texts, smallShape, smallSpace},
          Inside{m_smallTexts, smallShape, smallSpace}, Inside{m_smallTexts, 0, 0}})
        if (drawAs(inside, mark))
            return;
    const QRectF place = placeOf(mark);
    drawShape(place, place.center().x() - smallShape / 2, smallShape, mark.block);
}

bool WeekMarkPainter::drawAs(const Inside& inside, const WeekPicture::Mark& mark)
{
    const QRectF place = placeOf(mark);
    const QSizeF size = textOf(inside.texts, mark.minute).size();
    const qreal left = inside.shapeSize > 0 ? inside.shapeSize + 2 * inside.space : 0;
    const qreal room = place.width() - left - inside.space;
    if (size.width() > room)
        return false;
    if (inside.shapeSize > 0)
        drawShape(place, place.left() + inside.space, inside.shapeSize, mark.block);
    inside.texts.placed.emplace_back(QPointF(place.left() + left + (room - size.width()) / 2,
                                             place.center().y() - size.height() / 2),
                                     mark.minute);
    return true;
}

void WeekMarkPainter::drawShape(const QRectF& place, qreal left, qreal size, int block)
{
    QPainterPath path;
    addShape(path, QRectF(left, place.center().y() - size / 2, size, size), block);
    // One path of all shapes would take twice the time.
    m_painter.fillPath(path, m_colours[static_cast<std::size_t>(block)]);
}

void WeekMarkPainter::drawTexts(const Texts& texts)
{
    m_painter.setFont(texts.font);
    for (const auto& [position, minute] : texts.placed)
        m_painter.drawStaticText(position, *texts.prepared.constFind(minute));
}

const QStaticText& WeekMarkPainter::textOf(Texts& texts, int minute) const
{
    QStaticText& text = texts.prepared[minute];
    if (text.text().isEmpty()) {
        Alarm alarm;
        alarm.Hour = static_cast<quint8>(minute / 60);
        alarm.Minute = static_cast<quint8>(minute % 60);
        text.setTextFormat(Qt::PlainText);
        text.setText(ProgrammeTexts::time(alarm));
        text.prepare(m_painter.transform(), texts.font);
    }
    return text;
}
