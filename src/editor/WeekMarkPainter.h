#pragma once

#include "WeekPicture.h"

#include <QColor>
#include <QHash>
#include <QPainterPath>
#include <QStaticText>

#include <array>

class QPainter;

/// Draws the marks of a picture of the week, with the painter's font: a frame in the colour of the
/// output, its shape and the time, as far as there is room. A narrow mark has the time alone, a
/// very narrow one the shape. A window is to be repainted while somebody types, so everything that
/// marks have in common is done once.
class WeekMarkPainter {
public:
    /// The colours of the three outputs.
    using Colours = std::array<QColor, Programme::blockCount>;

    WeekMarkPainter(QPainter& painter, const Colours& colours, const QColor& text,
                    const QColor& background);

    void draw(const std::vector<WeekPicture::Mark>& marks);

    /// A disc, a square, a triangle for outputs 1 to 3.
    static void addShape(QPainterPath& path, const QRectF& place, int block);

private:
    void drawFrame(const WeekPicture::Mark& mark);
    void drawInside(const WeekPicture::Mark& mark);
    const QStaticText& textOf(int minute);

    QPainter& m_painter;
    const Colours m_colours;
    Colours m_tints;
    const QColor m_text;
    const qreal m_shapeSize;
    std::array<QPainterPath, Programme::blockCount> m_shapes;
    /// By the minute of the day.
    QHash<int, QStaticText> m_texts;
};
