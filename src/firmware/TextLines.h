#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QIODevice>

/// Reads the lines of a text that are not empty, without the spaces around them. CR, LF and CR LF
/// end a line; the last line may have no end. Uses the memory of one chunk and one line, and reads
/// each byte once, whatever the text.
class TextLines {
public:
    enum class Status {
        Line,
        End,
        /// The line is longer than `longestLine` characters. Reading stops there.
        TooLong,
        /// Reading failed, or there are more than `largestText` bytes.
        Failed,
    };

    /// The characters of the longest record: colon, count, address, type, 255 data bytes, checksum.
    static constexpr qsizetype longestLine = 521;
    /// In bytes: far more than the 17 MB of the longest image. Stops reading an endless file.
    static constexpr qint64 largestText = 256LL * 1024 * 1024;

    /// `device` must be open for reading and outlive this.
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
    /// The first line feed from the cursor on, or the end. Kept, so that a text with many CRs is
    /// not searched again for each of them.
    const char* m_lineFeed;
    qint64 m_bytesRead = 0;
    bool m_allRead = false;
};
