#pragma once

#include "WeekDrawing.h"

#include <QFont>

/// What everything on the sheet for the wall has in common. Lengths are in points (1/72 inch).
namespace PaperLook {

constexpr qreal gap = 10;
constexpr int headingSize = 10;

/// A font of this size on a page that is painted in points. Its widths do not depend on the device.
QFont font(int size, bool bold = false);
const WeekDrawing::Look& week();

} // namespace PaperLook
