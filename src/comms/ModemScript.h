#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// A modem command script (*.mdm): text lines, each an AT command, optionally followed by one TAB
/// and the text that its reply must contain; ";" in the first column makes a line a comment. Bytes
/// are taken as they are; lines end with CR LF, LF or CR.
///
/// Bounds: a file of up to maximumSize bytes, lines of up to maximumLine (of a longer one nothing
/// is kept: half a command may be another command), the first maximumLine characters of a comment.
/// It is read whole when it is opened, so what
/// happens to the file later is of no matter.
class ModemScript {
public:
    static constexpr qsizetype maximumSize = 1024LL * 1024;
    static constexpr qsizetype maximumLine = 1024;

    struct Line {
        /// The line, ";" included, when it is a comment.
        QString comment;
        QByteArray command;
        /// Empty stands for "OK".
        QByteArray expected;

        /// A command longer than maximumLine: nothing else is set.
        bool tooLong = false;

        bool isComment() const { return !comment.isEmpty(); }
    };

    /// False when the file cannot be read, is too long, or is no text (holds NUL); `error` then
    /// says why, in Spanish.
    bool open(const QString& path);
    /// The same with the bytes of the file; more than maximumSize are too long.
    bool read(const QByteArray& text);
    const QString& error() const { return m_error; }

    /// The next line that is not empty; nothing at the end.
    std::optional<Line> next();

private:
    bool refuse(const QString& error);
    QByteArray takeLine();

    QByteArray m_text;
    qsizetype m_position = 0;
    QString m_error;
};
