#pragma once

#include <QString>

#include <optional>

namespace simulator {

constexpr int anHour = 3'600'000; ///< in milliseconds

/// A whole number, decimal or hexadecimal with "0x". Nothing when it is outside the limits, which
/// are included.
inline std::optional<int> numberIn(const QString& text, int minimum, int maximum)
{
    bool good = false;
    const bool hexadecimal = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
    const int number = hexadecimal ? text.mid(2).toInt(&good, 16) : text.toInt(&good, 10);
    if (!good || number < minimum || number > maximum)
        return std::nullopt;
    return number;
}

} // namespace simulator
