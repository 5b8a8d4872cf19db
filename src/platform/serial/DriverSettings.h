#pragma once

#include "LineSettings.h"

/// Which of the settings the driver of an open port did not take, in Spanish; empty when it took
/// all. Drivers and the toolkit replace values that they do not support (1.5 stop bits by 1, a
/// speed by a near one) without an error, and the clock could not read the frames.
QString refusedByDriver(int descriptor, const LineSettings& wanted);
