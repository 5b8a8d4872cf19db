#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QIODevice>

/// The lines of a text that hold something, each without the spaces around it. CR, LF and CR LF end
/// a line, and the last one may lack its end. Whatever the text, it holds one chunk and one line in
/// memory, and goes over each byte once.
class TextLines {
public:
    enum class Status {
        Line,
        End,
        /// The line is longer than `longestLine` characters; reading stops there.
        TooLong,
        /// The device failed, or has more than `largestText` bytes.
        Failed,
    };

    /// The longest record: colon, count, address, type, 255 data bytes and checksum.
    static constexpr qsizetype longestLine = 521;
    /// Far above the 17 MB of the longest image, so that a file that never ends does.
    static constexpr qint64 largestText = 256 * 1024 * 1024;

    /// `device` is open for reading and outlives this.
    explicit TextLines(QIODevice& device);

    /// `line` is valid until the next call.
    Status next(QByteArrayView& line);

private:
    const char* lineEnd();
    Status refill();

    QIODevice& m_device;
    QByteArray m_buffer;
    const char* m_cursor;
    const char* m_end;
    /// The first line feed from the cursor on, or the end; found once, however many CRs precede it.
    const char* m_lineFeed;
    qint64 m_bytesRead = 0;
    bool m_allRead = false;
};
