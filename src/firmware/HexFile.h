#pragma once

#include <QByteArrayView>
#include <QIODevice>
#include <QString>

#include <array>
#include <memory_resource>
#include <span>
#include <vector>

/// One data record of the file, ready to send.
struct HexLine {
    /// Absolute load address of the first data byte; 32 bits that wrap.
    qint32 Address = 0;
    /// 1 to 255 once loaded.
    quint8 Count = 0;
    /// `Count` bytes in file order, kept by the HexFile until its next load.
    std::span<const quint8> Data;
};

/// A firmware image read from an Intel HEX text file: the table of its data records. Nothing that a
/// file holds makes it fail otherwise than by its outcome; it keeps at most 32767 lines (some 15
/// MB), and takes a time that grows with the file's length only.
class HexFile {
public:
    enum class Outcome { Loaded, FormatError, ReadError };

    HexFile();
    HexFile(const HexFile&) = delete;
    HexFile& operator=(const HexFile&) = delete;

    /// Positions are those of characters in a line, counted from 1.
    static bool IsHexDigit(char character);
    /// The two characters at `position` and behind it as a number; 0 when they are no digits.
    static quint8 HexByteAt(QByteArrayView text, qsizetype position);
    static bool IsValidHexLine(QByteArrayView text);

    /// Puts a valid data record into `line` and counts it; an address record sets its base; other
    /// records do nothing. False when the count would leave its 16 bits.
    bool StoreHexLine(HexLine& line, QByteArrayView text);

    /// Reads a regular file. Anything but Loaded leaves no lines.
    Outcome LoadHexFile(const QString& path);
    /// The same from a device open for reading; `path` is for the texts.
    Outcome LoadHexFile(QIODevice& device, const QString& path);

    qint16 LineCount() const { return m_lineCount; }
    /// `index` from 0 to LineCount - 1.
    const HexLine& Lines(qint16 index) const { return m_lines[static_cast<std::size_t>(index)]; }
    /// The last index that the table has room for.
    qsizetype upperBound() const { return static_cast<qsizetype>(m_lines.size()) - 1; }
    qint32 LinearBase() const { return m_linearBase; }
    qint32 SegmentBase() const { return m_segmentBase; }

    /// What the window shows of the last load: the file's name, the number of lines (both empty
    /// after a failed one) and the lines for the log, each ended by CR LF.
    const QString& fileCaption() const { return m_fileCaption; }
    const QString& sizeCaption() const { return m_sizeCaption; }
    const QString& note() const { return m_note; }

private:
    enum class RecordType : quint8 {
        Data = 0,
        EndOfFile = 1,
        SegmentAddress = 2,
        StartSegmentAddress = 3,
        LinearAddress = 4,
        StartLinearAddress = 5,
    };
    /// The bytes behind the colon: count, two of address, type, data, checksum.
    struct Record {
        std::array<quint8, 260> bytes;
        quint8 count() const { return bytes[0]; }
        RecordType type() const { return static_cast<RecordType>(bytes[3]); }
        quint16 word(std::size_t index) const
        {
            return static_cast<quint16>(bytes[index] << 8 | bytes[index + 1]);
        }
    };

    static bool decode(QByteArrayView text, Record& record);
    static bool fitsItsType(const Record& record);
    bool store(HexLine& line, const Record& record);
    Outcome readRecords(QIODevice& device);
    Outcome conclude(Outcome outcome, const QString& path);
    void clear();

    std::vector<HexLine> m_lines;
    std::pmr::monotonic_buffer_resource m_data;
    qint16 m_lineCount = 0;
    qint32 m_linearBase = 0;
    qint32 m_segmentBase = 0;
    QString m_fileCaption;
    QString m_sizeCaption;
    QString m_note;
};
