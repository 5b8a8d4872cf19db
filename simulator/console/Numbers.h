#pragma once

#include <QString>

#include <optional>

namespace simulator {

/// A whole number in decimal, or in hexadecimal behind "0x", between the two limits.
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
