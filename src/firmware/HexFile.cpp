#include "HexFile.h"

#include "TextLines.h"
#include "WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// The first upper bound of the table, and by how much it exceeds the count when it is enlarged.
constexpr std::size_t tableStep = 2048;
/// In bytes: count, address and type before the data, and the checksum after them.
constexpr qsizetype frameBytes = 5;

/// More than the sum of 260 bytes, so that a sum of bytes tells whether one digit was bad. 520
/// times this value fits in 32 bits.
constexpr quint32 notADigit = 0x100000;

/// The value of each character as a hexadecimal digit, shifted left.
constexpr std::array<quint32, 256> digitValues(int shift)
{
    std::array<quint32, 256> values{};
    values.fill(notADigit);
    for (quint32 digit = 0; digit < 16; ++digit) {
        values[digit < 10 ? '0' + digit : 'A' + digit - 10] = digit << shift;
        values[digit < 10 ? '0' + digit : 'a' + digit - 10] = digit << shift;
    }
    return values;
}

constexpr std::array<quint32, 256> highDigit = digitValues(4);
constexpr std::array<quint32, 256> lowDigit = digitValues(0);

/// The byte of two digits; notADigit or more when one is no digit.
quint32 byteValue(const char* characters)
{
    return highDigit[static_cast<quint8>(characters[0])] +
           lowDigit[static_cast<quint8>(characters[1])];
}

} // namespace

HexFile::HexFile() { clear(); }

bool HexFile::IsHexDigit(char character)
{
    return lowDigit[static_cast<quint8>(character)] != notADigit;
}

quint8 HexFile::HexByteAt(QByteArrayView text, qsizetype position)
{
    if (position < 1 || position >= text.size())
        return 0;
    const quint32 value = byteValue(text.data() + position - 1);
    return value < notADigit ? static_cast<quint8>(value) : quint8{0};
}

bool HexFile::IsValidHexLine(QByteArrayView text)
{
    Record record;
    return decode(text, record);
}

/// Checks the digits, adds the bytes and stores them in one pass: a bad digit is seen in the sum.
bool HexFile::decode(QByteArrayView text, Record& record)
{
    if (text.size() < 2 * frameBytes + 1 || text.front() != ':')
        return false;
    if (text.size() != 2 * qsizetype{HexByteAt(text, 2)} + 2 * frameBytes + 1)
        return false;

    quint32 sum = 0;
    const char* characters = text.data() + 1;
    quint8* byte = record.bytes.data();
    for (const char* const end = text.data() + text.size(); characters != end; characters += 2) {
        const quint32 value = byteValue(characters);
        *byte++ = static_cast<quint8>(value);
        sum += value;
    }
    return sum < notADigit && (sum & 0xFF) == 0 && fitsItsType(record);
}

bool HexFile::fitsItsType(const Record& record)
{
    const bool atZero = record.word(1) == 0;
    switch (record.type()) {
    case RecordType::Data: return record.count() != 0;
    case RecordType::EndOfFile: return record.count() == 0 && atZero;
    case RecordType::SegmentAddress:
    case RecordType::LinearAddress: return record.count() == 2 && atZero;
    case RecordType::StartSegmentAddress:
    case RecordType::StartLinearAddress: return record.count() == 4 && atZero;
    }
    return false;
}

bool HexFile::StoreHexLine(HexLine& line, QByteArrayView text)
{
    Record record;
    return !decode(text, record) || store(line, record);
}

bool HexFile::store(HexLine& line, const Record& record)
{
    switch (record.type()) {
    case RecordType::Data: {
        if (m_lineCount == std::numeric_limits<qint16>::max())
            return false;
        const std::size_t count = record.count();
        auto* const data = static_cast<quint8*>(m_data.allocate(count, 1));
        std::copy_n(record.bytes.data() + 4, count, data);
        const quint32 base =
            static_cast<quint32>(m_linearBase) + static_cast<quint32>(m_segmentBase);
        line = {static_cast<qint32>(base + record.word(1)), record.count(), {data, count}};
        ++m_lineCount;
        return true;
    }
    case RecordType::SegmentAddress:
        // 8 bits and not the 4 bits of the published format is intentional: the clock's images are
        // made so.
        m_segmentBase = record.word(4) << 8;
        return true;
    case RecordType::LinearAddress:
        m_linearBase = static_cast<qint32>(static_cast<quint32>(record.word(4)) << 16);
        return true;
    case RecordType::EndOfFile:
    case RecordType::StartSegmentAddress:
    case RecordType::StartLinearAddress: break;
    }
    return true;
}

HexFile::Outcome HexFile::LoadHexFile(const QString& path)
{
    QFile file(path);
    if (!WholeFile::open(file, QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        clear();
        return conclude(Outcome::ReadError, path);
    }
    return LoadHexFile(file, path);
}

HexFile::Outcome HexFile::LoadHexFile(QIODevice& device, const QString& path)
{
    clear();
    return conclude(readRecords(device), path);
}

HexFile::Outcome HexFile::readRecords(QIODevice& device)
{
    TextLines lines(device);
    QByteArrayView text;
    Record record;
    for (;;) {
        switch (lines.next(text)) {
        case TextLines::Status::Line: break;
        case TextLines::Status::End:
        case TextLines::Status::TooLong: return Outcome::FormatError;
        case TextLines::Status::Failed: return Outcome::ReadError;
        }
        if (!decode(text, record))
            return Outcome::FormatError;
        if (record.type() == RecordType::EndOfFile)
            return Outcome::Loaded;

        const auto count = static_cast<std::size_t>(m_lineCount);
        if (count >= m_lines.size())
            m_lines.resize(count + tableStep + 1);
        if (!store(m_lines[count], record))
            return Outcome::ReadError;
    }
}

HexFile::Outcome HexFile::conclude(Outcome outcome, const QString& path)
{
    const QString shownPath = QDir::toNativeSeparators(path);
    if (outcome != Outcome::Loaded) {
        clear();
        m_note = (outcome == Outcome::FormatError
                      ? u"El formato del archivo '%1' es incorrecto\r\n"_s
                      : u"Se ha producido un error leyendo el archivo '%1'\r\n"_s)
                     .arg(shownPath);
        return outcome;
    }
    const QString count = QString::number(m_lineCount);
    m_fileCaption = QFileInfo(path).fileName() + u' ';
    m_sizeCaption = count;
    m_note = u"Cargado archivo '"_s + shownPath + u"'\r\nLeídas "_s + count +
             u" líneas de código HEX\r\n"_s;
    return outcome;
}

void HexFile::clear()
{
    m_lines.resize(tableStep + 1);
    // Those from the count on are empty.
    const auto used = std::min(static_cast<std::size_t>(m_lineCount), m_lines.size());
    std::fill_n(m_lines.begin(), used, HexLine());
    m_data.release();
    m_lineCount = 0;
    m_linearBase = 0;
    m_segmentBase = 0;
    m_fileCaption.clear();
    m_sizeCaption.clear();
    m_note.clear();
}
