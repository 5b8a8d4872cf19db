#pragma once

#include "ClockProgramme.h"

#include <QString>

#include <optional>

namespace simulator {

/// The text of a configuration file: 363 lines ended by CR LF. For each block a header, duration,
/// mode and 32 times hour, minute and day mask; then the holidays; then the vacations.
QByteArray toHctFile(const ClockProgramme& programme);

/// Reads such a text, with any kind of line end. Headers are skipped by position. Nothing when a
/// line is missing or holds no number within its range; then reason names the line.
std::optional<ClockProgramme> fromHctFile(const QByteArray& text, QString& reason);

} // namespace simulator
