#pragma once

#include "CommandResult.h"
#include "Numbers.h"

#include <utility>

namespace simulator {

/// Splits at the first blank: the word before it and the rest, both trimmed.
inline std::pair<QString, QString> firstWord(const QString& text)
{
    const QString trimmed = text.trimmed();
    const qsizetype blank = trimmed.indexOf(u' ');
    return {trimmed.left(blank), blank < 0 ? QString() : trimmed.mid(blank).trimmed()};
}

/// Hands a number within the limits to the setter.
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

/// Hands true for the first word and false for the second to the setter.
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

template<typename Setter>
CommandResult withSwitch(const QString& text, Setter set)
{
    return withChoice(text, "on", "off", set);
}

} // namespace simulator
