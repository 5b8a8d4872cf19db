#pragma once

#include "ClockModel.h"

#include <QByteArrayView>
#include <QList>
#include <QString>

/// A reading of a configuration file that tells everything which ProgrammeFile::read passes over.
namespace ProgrammeCheck {

struct Problem {
    /// Error: a value is not read as it is written, or the clock cannot obey it. Warning: the file
    /// is read as it is written, but may be for something else.
    enum class Severity { Error, Warning };

    Severity severity;
    /// From 1; 0 for the file as a whole.
    int line;
    /// One line for the operator, in Spanish.
    QString text;
};

/// All problems, in the order of their lines: headers with another text; lines that are missing,
/// too many, no whole number, or out of range; alarms of one block with the same time; dates that
/// no calendar has or that are half set; periods without start or end. Give it one byte more than
/// ProgrammeFile::maximumBytes, if there are so many: a longer file is an error.
QList<Problem> problemsOf(QByteArrayView text, ClockModel model);

bool hasErrors(const QList<Problem>& problems);

} // namespace ProgrammeCheck
