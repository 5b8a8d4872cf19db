#pragma once

#include "WeekPicture.h"

#include <QColor>
#include <QFontMetricsF>
#include <QMarginsF>

class QPainter;

/// Draws a picture of the week on a screen or on paper. Outputs have a colour each, which the
/// colour-blind tell apart, and a shape: a disc, a square, a triangle.
namespace WeekDrawing {

struct Look {
    QColor text;
    QColor lines;
    QColor background;
    bool isDark = false;
};

/// That of output 1 to 3 for `block` 0 to 2, seen well on a light or dark background.
QColor outputColour(int block, bool isDark);

/// The room that the area of the picture needs around it: for the hours and the names of the
/// columns.
QMarginsF margins(const QFontMetricsF& metrics);
/// What a WeekPicture needs for a mark.
qreal markHeight(const QFontMetricsF& metrics);

/// That in which every output has room for a time and its shape, side by side.
int leastColumnWidth(const QFontMetricsF& metrics);

/// Draws all of it, with the painter's font.
void draw(QPainter& painter, const WeekPicture& picture, const Look& look);
/// Draws the shape of an output and its name, "Salida 1"; the width that it took, with the room to
/// the next.
qreal drawLegend(QPainter& painter, const QPointF& position, int block, const Look& look);

} // namespace WeekDrawing
