#pragma once

#include "LineSettings.h"

/// In Spanish, what the driver of an open port does otherwise than asked; empty when it took all.
/// Drivers and the library above them quietly put something else in the place of what they can't
/// do (1 stop bit for 1.5, a neighbouring speed), and a clock would hear nonsense.
QString refusedByDriver(int descriptor, const LineSettings& wanted);
