#pragma once

#include "ClockProgramme.h"

#include <QString>

#include <optional>

namespace simulator {

/// The text of a configuration file: 363 lines ended by CR LF. For each block a header, duration,
/// mode and 32 times hour, minute and day mask; then the holidays; then the vacations.
QByteArray toHctFile(const ClockProgramme& programme);

/// Reads such a text, with any line ends. Headers are skipped by their position. Nothing when a
/// line is missing or has no number in its range; `reason` then names the line.
std::optional<ClockProgramme> fromHctFile(const QByteArray& text, QString& reason);

} // namespace simulator
