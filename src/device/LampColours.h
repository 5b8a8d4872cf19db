#pragma once

#include <QtGlobal>

/// Colours of the lamps, 0x00BBGGRR.
namespace lampcolour {
constexpr quint32 Red = 0x0000FF;
constexpr quint32 DarkRed = 0x000080;
constexpr quint32 Green = 0x00FF00;
constexpr quint32 DarkGreen = 0x008000;
} // namespace lampcolour
