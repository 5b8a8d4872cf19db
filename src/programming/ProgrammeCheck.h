#pragma once

#include "ClockModel.h"
#include "ProgrammeProblem.h"

#include <QByteArrayView>
#include <QList>

/// A reading of a configuration file that tells everything which ProgrammeFile::read passes over.
namespace ProgrammeCheck {

using Problem = ProgrammeProblem;

/// All problems, in the order of their lines: a byte order mark; headers with another text; lines
/// that are missing, too many, no whole number, or out of range; alarms of one block with the same
/// time; dates that no calendar has or that are half set; periods without start or end; modes that
/// the HCT-7200 does not have. Give it one byte more than ProgrammeFile::maximumBytes, if there are
/// so many: a longer file is an error. What follows a block that lacks lines, or has some too many,
/// is read at its own lines.
QList<Problem> problemsOf(QByteArrayView text, ClockModel model);

/// Whether one of them is more than a warning.
bool hasErrors(const QList<Problem>& problems);
/// Whether a clock would get something else than what is written.
bool isMisread(const QList<Problem>& problems);

} // namespace ProgrammeCheck
