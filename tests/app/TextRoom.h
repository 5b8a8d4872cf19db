#pragma once

#include <QStringList>

class QWidget;

/// The visible controls of a window whose text is cut, with the room that each has and needs in
/// pixels; empty when all texts can be read.
QStringList cutTexts(const QWidget& window);
