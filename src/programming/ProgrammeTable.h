#pragma once

#include "Programme.h"

#include <QString>

/// A programme as a table of plain text, in Spanish, for those who look after the clock. Of each
/// output: duration, mode and what the mode means, and the alarms in the order of their times with
/// a column for each day. Then holidays, vacation periods, and what the letters of the columns
/// mean. Lines end with LF.
namespace ProgrammeTable {

QString text(const Programme& programme, ClockModel model);

} // namespace ProgrammeTable
