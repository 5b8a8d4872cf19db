#pragma once

#include "WeekPicture.h"

#include <QColor>
#include <QFont>
#include <QHash>
#include <QPainterPath>
#include <QStaticText>

#include <array>
#include <utility>
#include <vector>

class QFontMetricsF;
class QPainter;

/// Draws the marks of a picture of the week, with the painter's font: a frame in the colour of the
/// output, its shape and the time. In a narrow mark both are smaller; a very narrow one has the
/// time alone, and one without room for that the shape. A window is to be repainted while somebody
/// types, so texts are prepared once for all marks.
class WeekMarkPainter {
public:
    /// The colours of the three outputs.
    using Colours = std::array<QColor, Programme::blockCount>;

    WeekMarkPainter(QPainter& painter, const Colours& colours, const QColor& text,
                    const QColor& background);

    void draw(const std::vector<WeekPicture::Mark>& marks);

    /// The least width of a mark with time and shape.
    static qreal leastWidth(const QFontMetricsF& metrics);

    /// A disc, a square, a triangle for outputs 1 to 3.
    static void addShape(QPainterPath& path, const QRectF& place, int block);

private:
    /// The times of marks in one font, and what of them is drawn already.
    struct Texts {
        QFont font;
        /// By the minute of the day.
        QHash<int, QStaticText> prepared;
        std::vector<std::pair<QPointF, int>> placed;
    };
    /// A shape and a text beside it, with room around both. No shape when its size is 0.
    struct Inside {
        Texts& texts;
        qreal shapeSize;
        qreal space;
    };

    void drawFrame(const WeekPicture::Mark& mark);
    /// Draws the shape and places the time, in the largest form for which there is room.
    void drawInside(const WeekPicture::Mark& mark);
    /// False when there is no room for this form.
    bool drawAs(const Inside& inside, const WeekPicture::Mark& mark);
    void drawShape(const QRectF& place, qreal left, qreal size, int block);
    void drawTexts(const Texts& texts);
    const QStaticText& textOf(Texts& texts, int minute) const;

    QPainter& m_painter;
    const Colours m_colours;
    Colours m_tints;
    const QColor m_text;
    const qreal m_ascent;
    Texts m_texts;
    Texts m_smallTexts;
};
