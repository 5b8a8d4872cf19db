#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// A text file taken apart into lines, each of which keeps the bytes that it was read from, so that
/// a file written again differs only in the lines that were changed. UTF-16 and UTF-8 are told by
/// their marks, UTF-16 without one by the zero in its first character; "REGEDIT4" in the first line
/// means the ANSI code page; all else is UTF-8, where a line that is none is taken as ANSI.
class EncodedLines {
public:
    struct Line {
        /// As in the file, ending included.
        QByteArray bytes;
        QString text;
        /// "\n", "\r\n", or nothing at the end of the file.
        QString ending;
    };

    explicit EncodedLines(const QByteArray& file = {});

    const QList<Line>& lines() const { return m_lines; }
    bool isAnsi() const { return m_encoding == Encoding::Ansi; }

    /// Puts these lines in the place of `count` lines from `first` on.
    void replace(qsizetype first, qsizetype count, const QStringList& texts);

    QByteArray toBytes() const;

private:
    enum class Encoding { Utf8, Ansi, Utf16LittleEndian, Utf16BigEndian };

    void readBytes(QByteArrayView content);
    void readUnits(QByteArrayView content);
    QByteArray encode(const QString& text) const;
    QString lineEnding() const;

    Encoding m_encoding = Encoding::Utf8;
    QByteArray m_mark;
    QList<Line> m_lines;
    /// Half a UTF-16 unit at the end of a truncated file.
    QByteArray m_rest;
};
