#pragma once

#include "Programme.h"

#include <QByteArray>
#include <QString>

/// The configuration file: text lines ended by CR LF, one decimal number in each, in a fixed order.
///
///     for each block 1 to 3:
///     --AVISOS b--                Duration, Mode, and 32 times Hour, Minute, mask of days
///     --FESTIVOS--                16 times Day, Month
///     --PERIODOS VACACIONALES--   8 times StartDay, StartMonth, EndDay, EndMonth
///
/// 363 lines. Headers are recognised by their position; their text is ignored.
namespace ProgrammeFile {

/// How many bytes of a file are read at most: some 400 times what a programme needs.
constexpr qint64 maximumBytes = 1024LL * 1024;

QByteArray text(const Programme& programme, ClockModel model);

/// Reads the text into the programme. Never fails. A value outside its range becomes 0; values
/// after the end of the text stay as they were. For the HCT-7200 durations and modes stay as they
/// were. For the HCT-7300 those from 0 to 255 are taken, and the masks are read by the mode just
/// read.
void read(const QByteArray& text, Programme& programme, ClockModel model);

/// The programme that a text holds by itself, with durations and modes for both models. Those of
/// the HCT-7200 are what the clock had when the file was saved. What the text lacks is 0.
Programme programmeIn(const QByteArray& text, ClockModel model);
/// The model that a text is for, as far as it tells: modes above 1 exist for the HCT-7300 only.
/// They are found also when lines are missing or too many.
ClockModel likelyModel(const QByteArray& text);

/// Replaces the file whole, or leaves the old one. False when it could not be written.
bool save(const QString& path, const Programme& programme, ClockModel model);

/// False, and the programme unchanged, when the file cannot be read.
bool load(const QString& path, Programme& programme, ClockModel model);

/// The number at the beginning of a line: blanks, sign, digits, point, digits. It is rounded to a
/// whole number, a half to the even one. 0 when there is no number. Numbers beyond `tooLarge`
/// become `tooLarge` or its negative.
constexpr int tooLarge = 1'000'000;
int leadingNumber(QByteArrayView line);

} // namespace ProgrammeFile
