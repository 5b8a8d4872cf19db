#pragma once

#include <QStringList>

class QWidget;

/// The visible controls of a window whose text is cut under its style, with the room that each has
/// and needs; none when all can be read.
QStringList cutTexts(const QWidget& window);
