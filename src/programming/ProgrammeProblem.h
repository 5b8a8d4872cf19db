#pragma once

#include <QString>

/// Something that is wrong with a configuration file.
struct ProgrammeProblem {
    /// Misread: a value is not read as it is written. Impossible: it is, but the clock cannot obey
    /// it. Doubtful: the file may be for something else; only a warning.
    enum class Kind { Misread, Impossible, Doubtful };

    Kind kind;
    /// From 1; 0 for the file as a whole.
    int line;
    /// One line for the operator, in Spanish.
    QString text;
};
