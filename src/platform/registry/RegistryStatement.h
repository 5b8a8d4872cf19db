#pragma once

#include "EncodedLines.h"
#include "Registry.h"

#include <QStringList>

/// What one or more lines of a registry file say.
struct RegistryStatement {
    enum class Kind {
        /// A header, a comment, a blank or damaged line.
        Nothing,
        /// `[key]`; with an empty name where the line is damaged.
        Key,
        /// `[-key]`.
        KeyDeletion,
        /// `"name"=data` or `@=data`; a text may hold line breaks, `hex` lines go on after a "\".
        Value,
        /// `"name"=-`.
        ValueDeletion
    };

    Kind kind = Kind::Nothing;
    qsizetype lineCount = 1;
    QString name;
    RegistryValue value;

    /// The statement that begins in line `first`. Data that does not end well makes only that one
    /// line say nothing; those after it are read for themselves. With `ansi`, texts in `hex(1)`
    /// are ANSI as in REGEDIT4 files, otherwise UTF-16.
    static RegistryStatement read(const QList<EncodedLines::Line>& lines, qsizetype first,
                                  bool ansi);
    /// The lines that say this value. A text with control characters is written as `hex(1)`, so
    /// that it takes part in no line structure.
    static QStringList write(const QString& name, const RegistryValue& value, bool ansi);
};
