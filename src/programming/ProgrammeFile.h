#pragma once

#include "Programme.h"

#include <QByteArray>
#include <QString>

/// The configuration file: text lines ended by CR LF, one decimal number a line, in a fixed order.
///
///     for each block 1 to 3:
///     --AVISOS b--                Duration, Mode, and 32 times Hour, Minute, mask of days
///     --FESTIVOS--                16 times Day, Month
///     --PERIODOS VACACIONALES--   8 times StartDay, StartMonth, EndDay, EndMonth
///
/// 363 lines. Headers are known by their place, whatever they say.
namespace ProgrammeFile {

/// Reading looks at no more than this much of a file, some 400 times what a programme needs.
constexpr qint64 maximumBytes = 1024 * 1024;

QByteArray text(const Programme& programme, ClockModel model);

/// Takes what the text says into the programme. A value out of its range becomes 0; values past the
/// end of the text stay as they were. Never fails. The HCT-7200 keeps its durations and modes;
/// the second takes those of 0 to 255 and reads the masks by the mode just read.
void read(const QByteArray& text, Programme& programme, ClockModel model);

/// Writes the whole file or leaves what was there; false when it could not be written.
bool save(const QString& path, const Programme& programme, ClockModel model);

/// False, and the programme untouched, when there is no such file that can be read.
bool load(const QString& path, Programme& programme, ClockModel model);

/// The number at the start of a line, rounded half to even: blanks, sign, digits, point, digits. 0
/// when there is none. What exceeds a range comes out as `tooLarge` or its negative.
constexpr int tooLarge = 1'000'000;
int leadingNumber(QByteArrayView line);

} // namespace ProgrammeFile
