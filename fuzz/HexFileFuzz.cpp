#include "FirmwareTransfer.h"
#include "HexFile.h"

#include <QBuffer>

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// A buffer that returns so many bytes at a time.
class Trickle final : public QIODevice {
public:
    Trickle(const QByteArray& bytes, qint64 atATime) : m_bytes(bytes), m_atATime(atATime)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 wanted) override
    {
        const QByteArray part = m_bytes.mid(m_done, std::min(wanted, m_atATime));
        std::copy(part.begin(), part.end(), data);
        m_done += part.size();
        return part.size();
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    qsizetype m_done = 0;
    qint64 m_atATime;
};

/// Reads the input as a list of records (type, length, address, data) and writes them as text, so
/// that the fuzzer need not guess checksums.
QByteArray asRecords(const QByteArray& input)
{
    QByteArray text;
    for (qsizetype at = 0; at + 4 <= input.size();) {
        const auto type = static_cast<quint8>(input[at]);
        const auto length = static_cast<quint8>(input[at + 1]);
        QByteArray record = input.mid(at + 1, 3);
        record.append(static_cast<char>(type & 0x07)).append(input.mid(at + 4, length));
        int sum = 0;
        for (const char byte : record)
            sum += byte;
        record.append(static_cast<char>(-sum));
        text += QByteArray((type >> 3) & 1, ' ') + ':' + record.toHex() +
                ((type & 0x10) != 0 ? "\r" : "") + ((type & 0x20) != 0 ? " \n" : "\n");
        at += 4 + length;
    }
    return text;
}

void checkLines(const HexFile& file, HexFile::Outcome outcome)
{
    require(outcome == HexFile::Outcome::Loaded || file.LineCount() == 0);
    require(file.sizeCaption().isEmpty() == (outcome != HexFile::Outcome::Loaded));
    require(!file.note().isEmpty());
    for (qint16 index = 0; index < file.LineCount(); ++index) {
        const HexLine& line = file.Lines(index);
        require(line.Count > 0 && line.Data.size() == line.Count);
        require(FirmwareTransfer::message(line, FirmwareTransfer::LastLine).size() ==
                line.Count + 9);
    }
}

} // namespace

/// Any text, in any portions. The loader must end with the same outcome, and its lines must be
/// complete. The first byte of the input chooses between text and records, the second the size of
/// the portions.
extern "C" int LLVMFuzzerTestOneInput(const quint8* data, std::size_t size)
{
    if (size < 2)
        return 0;
    const QByteArray input(reinterpret_cast<const char*>(data + 2),
                           static_cast<qsizetype>(size - 2));
    QByteArray text = (data[0] & 1) != 0 ? asRecords(input) : input;

    HexFile whole;
    QBuffer buffer(&text);
    buffer.open(QIODevice::ReadOnly);
    const HexFile::Outcome outcome = whole.LoadHexFile(buffer, u"imagen.hex"_s);
    checkLines(whole, outcome);

    HexFile inPortions;
    Trickle trickle(text, data[1] + 1);
    require(inPortions.LoadHexFile(trickle, u"imagen.hex"_s) == outcome);
    require(inPortions.LineCount() == whole.LineCount());
    for (qint16 index = 0; index < whole.LineCount(); ++index) {
        require(inPortions.Lines(index).Address == whole.Lines(index).Address);
        require(std::ranges::equal(inPortions.Lines(index).Data, whole.Lines(index).Data));
    }
    HexFile::IsValidHexLine(input);
    return 0;
}
