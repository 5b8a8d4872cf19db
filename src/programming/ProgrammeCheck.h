#pragma once

#include "ClockModel.h"

#include <QByteArrayView>
#include <QList>
#include <QString>

/// A reading of a configuration file that tells everything which ProgrammeFile::read passes over.
namespace ProgrammeCheck {

struct Problem {
    /// Misread: a value is not read as it is written. Impossible: it is, but the clock cannot obey
    /// it. Doubtful: the file may be for something else; only a warning.
    enum class Kind { Misread, Impossible, Doubtful };

    Kind kind;
    /// From 1; 0 for the file as a whole.
    int line;
    /// One line for the operator, in Spanish.
    QString text;
};

/// All problems, in the order of their lines: headers with another text; lines that are missing,
/// too many, no whole number, or out of range; alarms of one block with the same time; dates that
/// no calendar has or that are half set; periods without start or end; modes that the HCT-7200 does
/// not have. Give it one byte more than
/// ProgrammeFile::maximumBytes, if there are so many: a longer file is an error.
QList<Problem> problemsOf(QByteArrayView text, ClockModel model);

/// Whether one of them is more than a warning.
bool hasErrors(const QList<Problem>& problems);
/// Whether a clock would get something else than what is written.
bool isMisread(const QList<Problem>& problems);

} // namespace ProgrammeCheck
