#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// A text file as lines. Each line keeps the bytes that it was read from, so that a file that is
/// written again differs only in the lines that were changed.
///
/// A byte order mark decides between UTF-8 and UTF-16. Without a mark, a zero in the first
/// character means UTF-16, "REGEDIT4" in the first line the ANSI code page, and all else UTF-8. A
/// line that is no valid UTF-8 is read as ANSI.
class EncodedLines {
public:
    struct Line {
        /// As in the file, with the line's ending. Refers to the file's bytes until it is changed.
        QByteArray bytes;
        QString text;
        /// "\n", "\r\n", or nothing at the end of the file.
        QString ending;
    };

    explicit EncodedLines(const QByteArray& file = {});

    const QList<Line>& lines() const { return m_lines; }
    bool isAnsi() const { return m_encoding == Encoding::Ansi; }

    /// Replaces `count` lines from `first` on by these texts.
    void replace(qsizetype first, qsizetype count, const QStringList& texts);

    QByteArray toBytes() const;

private:
    enum class Encoding { Utf8, Ansi, Utf16LittleEndian, Utf16BigEndian };

    void readBytes(QByteArrayView content);
    void readUnits(QByteArrayView content);
    void appendLine(QByteArrayView bytes, const QString& text, qsizetype endingSize);
    QByteArray encode(const QString& text) const;
    QString lineEnding() const;

    /// Keeps the bytes that the lines refer to.
    QByteArray m_file;
    Encoding m_encoding = Encoding::Utf8;
    QByteArray m_mark;
    QList<Line> m_lines;
    /// Half a UTF-16 unit at the end of a truncated file.
    QByteArray m_rest;
};

Q_DECLARE_TYPEINFO(EncodedLines::Line, Q_RELOCATABLE_TYPE);
