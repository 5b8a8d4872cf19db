#pragma once

#include "EncodedLines.h"
#include "Registry.h"

#include <QStringList>

/// One statement of a registry file, on one or more lines.
struct RegistryStatement {
    enum class Kind {
        /// A header, a comment, an empty or a damaged line.
        Nothing,
        /// `[key]`. The name is empty if the line is damaged.
        Key,
        /// `[-key]`.
        KeyDeletion,
        /// `"name"=data` or `@=data`. A text may contain line breaks; `hex` data continues on the
        /// next line after a "\".
        Value,
        /// `"name"=-`.
        ValueDeletion
    };

    Kind kind = Kind::Nothing;
    qsizetype lineCount = 1;
    QString name;
    RegistryValue value;

    /// The statement that begins in line `first`. If its data is damaged, that one line is Nothing
    /// and the next line is read by itself. With `ansi`, texts in `hex(1)` are ANSI as in REGEDIT4
    /// files, otherwise UTF-16.
    static RegistryStatement read(const QList<EncodedLines::Line>& lines, qsizetype first,
                                  bool ansi);
    /// The lines for this value. A text with control characters is written as `hex(1)`: a line
    /// break in it could be read as the end of the statement.
    static QStringList write(const QString& name, const RegistryValue& value, bool ansi);
};
