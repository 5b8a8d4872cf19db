#pragma once

#include "Programme.h"

#include <QString>

/// The parts of a programme in Spanish, as lists and tables show them.
namespace ProgrammeTexts {

/// "HCT-7200"
QString modelName(ClockModel model);
/// "Salida 1" for block 0.
QString output(int block);
/// "9:05"
QString time(const Alarm& alarm);
/// "lunes a viernes", "lunes, miércoles y festivos". Three or more days in a row are written as a
/// range. Empty without any day.
QString days(const Alarm& alarm);
/// The full name of a day: "miércoles", "vacaciones".
QString day(int flag);
/// "01/05", as in the window; of dates that no calendar has, too.
QString date(int day, int month);
/// "23/12 a 07/01"
QString period(const VacationPeriod& period);

} // namespace ProgrammeTexts
