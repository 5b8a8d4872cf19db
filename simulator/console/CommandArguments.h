#pragma once

#include "CommandResult.h"
#include "Numbers.h"

#include <utility>

namespace simulator {

/// The first word and the rest, both without blanks around them.
inline std::pair<QString, QString> firstWord(const QString& text)
{
    const QString trimmed = text.trimmed();
    const qsizetype blank = trimmed.indexOf(u' ');
    return {trimmed.left(blank), blank < 0 ? QString() : trimmed.mid(blank).trimmed()};
}

/// Calls the setter with the number in `text`, if it is within the limits.
template<typename Setter>
CommandResult withNumber(const QString& text, int minimum, int maximum, Setter set)
{
    const std::optional<int> number = numberIn(text, minimum, maximum);
    if (!number)
        return CommandResult::failed(
            QStringLiteral("a number from %1 to %2 is wanted").arg(minimum).arg(maximum));
    set(*number);
    return {};
}

/// Calls the setter with true for the first word and false for the second.
template<typename Setter>
CommandResult withChoice(const QString& text, const char* first, const char* second, Setter set)
{
    const bool isFirst = text == QLatin1String(first);
    if (!isFirst && text != QLatin1String(second))
        return CommandResult::failed(
            QStringLiteral("%1 or %2 is wanted").arg(QLatin1String(first), QLatin1String(second)));
    set(isFirst);
    return {};
}

/// Calls the setter with true for "on" and false for "off".
template<typename Setter>
CommandResult withSwitch(const QString& text, Setter set)
{
    return withChoice(text, "on", "off", set);
}

} // namespace simulator
