#include "HctFile.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

/// The file has Monday in bit 0, the clock in the highest bit. In the extended modes the five bits
/// are Saturday, Sunday, holiday, vacation and all of Monday to Friday, in the same order in both.
int reversed(int dayBits)
{
    int mask = 0;
    for (int bit = 0; bit < 5; ++bit)
        mask |= ((dayBits >> bit) & 1) << (4 - bit);
    return mask;
}

class LineWriter {
public:
    void header(const char* text) { m_text.append(text).append("\r\n"); }
    void number(int value) { m_text.append(QByteArray::number(value)).append("\r\n"); }
    const QByteArray& text() const { return m_text; }

private:
    QByteArray m_text;
};

class LineReader {
public:
    explicit LineReader(const QByteArray& text) : m_lines(text.split('\n')) {}

    void header() { ++m_next; }
    /// The number in the next line; 0 and a failure when it is missing or above the maximum.
    int number(int maximum)
    {
        const qsizetype line = m_next++;
        bool good = false;
        const int value = line < m_lines.size() ? m_lines[line].trimmed().toInt(&good) : 0;
        if (good && value >= 0 && value <= maximum)
            return value;
        if (m_failure == 0)
            m_failure = line + 1;
        return 0;
    }
    /// The first line that failed, counted from 1; 0 after success.
    qsizetype failure() const { return m_failure; }

private:
    QList<QByteArray> m_lines;
    qsizetype m_next = 0;
    qsizetype m_failure = 0;
};

void writeBlock(LineWriter& writer, const AlarmBlock& block)
{
    writer.number(block.duration);
    writer.number(block.mode);
    for (int alarm = 0; alarm < AlarmBlock::alarmCount; ++alarm) {
        writer.number(block.hour(alarm));
        writer.number(block.minute(alarm));
        writer.number(reversed(block.dayBits(alarm)));
    }
}

AlarmBlock readBlock(LineReader& reader)
{
    AlarmBlock block;
    block.duration = quint8(reader.number(255));
    block.mode = quint8(reader.number(255));
    for (int alarm = 0; alarm < AlarmBlock::alarmCount; ++alarm) {
        const int hour = reader.number(23);
        const int minute = reader.number(59);
        block.setAlarm(alarm, hour, minute, quint8(reversed(reader.number(31))));
    }
    block.activeCountPlusOne = quint8(block.activeAlarms() + 1);
    return block;
}

} // namespace

QByteArray toHctFile(const ClockProgramme& programme)
{
    LineWriter writer;
    constexpr std::array<const char*, 3> headers{"--AVISOS 1--", "--AVISOS 2--", "--AVISOS 3--"};
    for (size_t block = 0; block < headers.size(); ++block) {
        writer.header(headers[block]);
        writeBlock(writer, programme.blocks[block]);
    }
    writer.header("--FESTIVOS--");
    for (qsizetype at = 0; at < ClockProgramme::dayTableSize; ++at) {
        if (at == 32)
            writer.header("--PERIODOS VACACIONALES--");
        writer.number(quint8(programme.days[at]));
    }
    return writer.text();
}

std::optional<ClockProgramme> fromHctFile(const QByteArray& text, QString& reason)
{
    constexpr qsizetype maximumSize = 65536;
    if (text.size() > maximumSize) {
        reason = u"the file is larger than any programme"_s;
        return std::nullopt;
    }
    LineReader reader(text);
    ClockProgramme programme;
    for (AlarmBlock& block : programme.blocks) {
        reader.header();
        block = readBlock(reader);
    }
    for (qsizetype at = 0; at < ClockProgramme::dayTableSize; ++at) {
        if (at == 0 || at == 32)
            reader.header();
        programme.days[at] = char(reader.number(at % 2 == 0 ? 31 : 12));
    }
    if (reader.failure() != 0) {
        reason = u"line %1 is missing or holds no number in its range"_s.arg(reader.failure());
        return std::nullopt;
    }
    return programme;
}

} // namespace simulator
