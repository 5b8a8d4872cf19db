#pragma once

#include "Programme.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

/// Days as people write them in Spanish.
namespace DayWords {

/// Small letters without accents and blanks around them. Blanks of any kind become plain ones.
QString plain(const QString& text);

/// The flag of one day: "L", "lun", "Lunes", "sábados", "Vac"; nothing when it is none. M is
/// Tuesday, X Wednesday.
std::optional<int> day(const QString& word);

struct Days {
    std::array<bool, dayFlagCount> flags{};
    /// Words that are no days.
    QStringList unknown;
};
/// "lunes, miércoles y festivos", "L-V", "de lunes a viernes", "LMXJV", "laborables". A range from
/// a later to an earlier day goes over the end of the week.
Days days(const QString& text);

} // namespace DayWords
