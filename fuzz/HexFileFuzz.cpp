#include "FirmwareTransfer.h"
#include "HexFile.h"
#include "Input.h"

#include <algorithm>
#include <string_view>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// A buffer that returns so many bytes at a time.
class Trickle final : public QIODevice {
public:
    Trickle(QByteArrayView bytes, qsizetype atATime) : m_rest(bytes), m_atATime(atATime)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 wanted) override
    {
        const auto part = m_rest.first(std::min({wanted, m_atATime, m_rest.size()}));
        std::copy(part.begin(), part.end(), data);
        m_rest = m_rest.sliced(part.size());
        return part.size();
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArrayView m_rest;
    qsizetype m_atATime;
};

/// Reads the input as a list of records (type, length, address, data) and writes them as text, so
/// that the fuzzer need not guess checksums.
QByteArray asRecords(const QByteArray& input)
{
    QByteArray text;
    text.reserve(4 * input.size());
    for (qsizetype at = 0; at + 4 <= input.size();) {
        const auto type = static_cast<quint8>(input[at]);
        const auto length = static_cast<quint8>(input[at + 1]);
        QByteArray record = input.mid(at + 1, 3);
        record.append(static_cast<char>(type & 0x07)).append(input.mid(at + 4, length));
        int sum = 0;
        for (const char byte : record)
            sum += byte;
        record.append(static_cast<char>(-sum));
        text.append((type >> 3) & 1, ' ').append(':').append(record.toHex());
        text.append((type & 0x10) != 0 ? "\r" : "").append((type & 0x20) != 0 ? " \n" : "\n");
        at += 4 + length;
    }
    return text;
}

struct Expected {
    HexFile::Outcome outcome = HexFile::Outcome::FormatError;
    std::vector<std::pair<quint32, QByteArray>> lines;
};

/// The bytes of a record, without its colon; empty when it is wrong.
QByteArray recordIn(std::string_view line)
{
    const bool isHex = std::all_of(line.begin() + 1, line.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    });
    if (line.size() % 2 != 1 || line.front() != ':' || !isHex)
        return {};
    const QByteArray record = QByteArray::fromHex(
        QByteArray::fromRawData(line.data(), static_cast<qsizetype>(line.size())));
    int sum = 0;
    for (const char byte : record)
        sum += byte;
    const bool isWhole = record.size() >= 5 && record.size() == static_cast<quint8>(record[0]) + 5;
    if (!isWhole || sum % 256 != 0)
        return {};
    static constexpr int counts[] = {-1, 0, 2, 4, 2, 4};
    const auto type = static_cast<quint8>(record[3]);
    if (type == 0)
        return record[0] != 0 ? record : QByteArray();
    const bool fits = type <= 5 && record[0] == counts[type] && record[1] == 0 && record[2] == 0;
    return fits ? record : QByteArray();
}

/// What must come of a text, found line by line.
Expected expectedOf(std::string_view text)
{
    Expected expected;
    quint32 linear = 0;
    quint32 segment = 0;
    while (!text.empty()) {
        const auto end =
            std::find_if(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; });
        std::string_view line(text.begin(), end);
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        line.remove_prefix(std::min(line.size(), line.find_first_not_of(' ')));
        line = line.substr(0, line.find_last_not_of(' ') + 1);
        if (line.empty())
            continue;
        const QByteArray record = recordIn(line);
        if (record.isEmpty())
            return {};
        const auto word = [&](qsizetype at) {
            return static_cast<quint32>(static_cast<quint8>(record[at]) << 8 |
                                        static_cast<quint8>(record[at + 1]));
        };
        switch (record[3]) {
        case 0:
            expected.lines.emplace_back(linear + segment + word(1), record.sliced(4).chopped(1));
            break;
        case 1: expected.outcome = HexFile::Outcome::Loaded; return expected;
        case 2: segment = word(4) << 8; break;
        case 4: linear = word(4) << 16; break;
        default: break;
        }
    }
    return {};
}

void checkMessage(quint32 address, const QByteArray& data, const QByteArray& message)
{
    QByteArray expected("\xDD\x00", 2);
    expected[1] = static_cast<char>(data.size());
    int sum = 0;
    for (int shift = 0; shift < 32; shift += 8)
        expected.append(static_cast<char>(address >> shift & 0xFF));
    for (const char byte : expected.sliced(2) + data)
        sum += byte;
    expected.append('\x01').append(data).append(static_cast<char>(sum)).append('\0');
    require(message == expected);
}

void checkLines(const HexFile& file, const Expected& expected)
{
    require(static_cast<std::size_t>(file.LineCount()) == expected.lines.size());
    for (qint16 index = 0; index < file.LineCount(); ++index) {
        const HexLine& line = file.Lines(index);
        const auto& [address, data] = expected.lines[static_cast<std::size_t>(index)];
        require(static_cast<quint32>(line.Address) == address);
        require(line.Count > 0 && line.Data.size() == line.Count);
        require(std::ranges::equal(line.Data, data, {}, {}, [](char c) { return quint8(c); }));
    }
    if (expected.lines.empty())
        return;
    const auto& [address, data] = expected.lines.back();
    const HexLine& last = file.Lines(static_cast<qint16>(file.LineCount() - 1));
    checkMessage(address, data, FirmwareTransfer::message(last, FirmwareTransfer::LastLine));
}

} // namespace

/// Any text, in any portions, loaded by a file that has loaded others before. Outcome and lines
/// must be those that are found line by line. The first byte of the input chooses between text and
/// records, the second the size of the portions.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    Input input(bytes, size);
    const quint8 choice = input.byte();
    const qsizetype portion = input.byte() + 1;
    const QByteArray text = (choice & 1) != 0 ? asRecords(input.rest()) : input.rest();

    static HexFile file;
    // A long text in small portions would take long and show nothing new.
    Trickle trickle(text, std::max(portion, text.size() / 16));
    const HexFile::Outcome outcome = file.LoadHexFile(trickle, u"imagen.hex"_s);
    const Expected expected = expectedOf({text.constData(), static_cast<std::size_t>(text.size())});
    require(outcome == expected.outcome);
    require(
        file.sizeCaption() ==
        (outcome == HexFile::Outcome::Loaded ? QString::number(expected.lines.size()) : QString()));
    require(!file.note().isEmpty());
    checkLines(file, expected);
    return 0;
}
