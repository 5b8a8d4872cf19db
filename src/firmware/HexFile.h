#pragma once

#include <QByteArrayView>
#include <QIODevice>
#include <QString>

#include <array>
#include <memory_resource>
#include <span>
#include <vector>

/// One data record of the file.
struct HexLine {
    /// Absolute load address of the first data byte, modulo 2^32.
    qint32 Address = 0;
    /// 1 to 255 once loaded.
    quint8 Count = 0;
    /// `Count` bytes in the order of the file. Valid until the HexFile loads again or is destroyed.
    std::span<const quint8> Data;
};

/// A firmware image read from an Intel HEX text file: the table of its data records. Any file is
/// safe to load: errors are an Outcome, at most 32767 lines (some 15 MB) are kept, and the time
/// grows only with the length of the file.
class HexFile {
public:
    enum class Outcome { Loaded, FormatError, ReadError };

    HexFile();
    HexFile(const HexFile&) = delete;
    HexFile& operator=(const HexFile&) = delete;

    // Positions count the characters of a line from 1.

    static bool IsHexDigit(char character);
    /// The two hexadecimal digits at `position` as a number; 0 when they are no digits.
    static quint8 HexByteAt(QByteArrayView text, qsizetype position);
    static bool IsValidHexLine(QByteArrayView text);

    /// Takes a valid record: a data record is stored in `line` and counted, an address record sets
    /// its base, other records do nothing. False when there are 32767 lines already.
    bool StoreHexLine(HexLine& line, QByteArrayView text);

    /// Reads a regular file. After any other outcome than Loaded there are no lines.
    Outcome LoadHexFile(const QString& path);
    /// The same from a device that is open for reading. `path` appears in the texts.
    Outcome LoadHexFile(QIODevice& device, const QString& path);

    qint16 LineCount() const { return m_lineCount; }
    /// `index` from 0 to LineCount - 1.
    const HexLine& Lines(qint16 index) const { return m_lines[static_cast<std::size_t>(index)]; }
    /// The last index of the table, which may be larger than LineCount - 1.
    qsizetype upperBound() const { return static_cast<qsizetype>(m_lines.size()) - 1; }
    qint32 LinearBase() const { return m_linearBase; }
    qint32 SegmentBase() const { return m_segmentBase; }

    /// Texts about the last load: the file's name and the number of lines (empty after a failure),
    /// and the lines for the window's log, each ended by CR LF.
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
    /// The bytes after the colon: count, two of address, type, data, checksum.
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
