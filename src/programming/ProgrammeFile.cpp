#include "ProgrammeFile.h"

#include "AlarmEncoding.h"
#include "ProgrammeLayout.h"
#include "WholeFile.h"

#include <algorithm>
#include <array>
#include <optional>

namespace ProgrammeFile {

namespace {

class LineWriter {
public:
    void number(quint8 value) { line(QByteArray::number(value)); }
    void line(const QByteArray& text)
    {
        m_text += text;
        m_text += "\r\n";
    }
    QByteArray take() { return std::move(m_text); }

private:
    QByteArray m_text;
};

bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// Reads the values of a text line by line.
class LineReader {
public:
    explicit LineReader(QByteArrayView text) : m_rest(text) {}

    void skipHeader() { nextLine(); }

    /// A value from 0 to `last`; any other number becomes 0.
    void take(quint8& value, int last)
    {
        if (const std::optional<int> number = nextNumber())
            value = *number >= 0 && *number <= last ? static_cast<quint8>(*number) : quint8{0};
    }
    /// A value from 0 to 255; any other number changes nothing.
    void takeByte(quint8& value)
    {
        const std::optional<int> number = nextNumber();
        if (number && *number >= 0 && *number <= 255)
            value = static_cast<quint8>(*number);
    }
    std::optional<quint8> takeMask()
    {
        const std::optional<int> number = nextNumber();
        if (!number)
            return std::nullopt;
        return *number >= 0 && *number <= ProgrammeLayout::lastMask ? static_cast<quint8>(*number)
                                                                    : quint8{0};
    }

private:
    std::optional<QByteArrayView> nextLine()
    {
        if (m_rest.isEmpty())
            return std::nullopt;
        const qsizetype end = m_rest.indexOf('\n');
        const QByteArrayView line = m_rest.first(end < 0 ? m_rest.size() : end);
        m_rest = m_rest.sliced(std::min(line.size() + 1, m_rest.size()));
        return line;
    }
    std::optional<int> nextNumber()
    {
        const std::optional<QByteArrayView> line = nextLine();
        if (!line)
            return std::nullopt;
        return leadingNumber(*line);
    }

    QByteArrayView m_rest;
};

void readBlock(LineReader& lines, AlarmBlock& block, ClockModel model)
{
    const AlarmEncoding& encoding = AlarmEncoding::of(model);
    lines.skipHeader();
    if (model == ClockModel::Hct7200) {
        // Skip the two lines: duration and mode come only from the clock.
        lines.skipHeader();
        lines.skipHeader();
    } else {
        lines.takeByte(block.Duration);
        lines.takeByte(block.Mode);
    }
    for (Alarm& alarm : block.Alarms) {
        lines.take(alarm.Hour, ProgrammeLayout::lastHour);
        lines.take(alarm.Minute, ProgrammeLayout::lastMinute);
        if (const std::optional<quint8> mask = lines.takeMask())
            encoding.applyMask(alarm, *mask, block.Mode);
    }
}

void readTable(LineReader& lines, HolidayTable& table)
{
    lines.skipHeader();
    for (Holiday& holiday : table.holidays) {
        lines.take(holiday.Day, ProgrammeLayout::lastDay);
        lines.take(holiday.Month, ProgrammeLayout::lastMonth);
    }
    lines.skipHeader();
    for (VacationPeriod& period : table.vacations) {
        lines.take(period.StartDay, ProgrammeLayout::lastDay);
        lines.take(period.StartMonth, ProgrammeLayout::lastMonth);
        lines.take(period.EndDay, ProgrammeLayout::lastDay);
        lines.take(period.EndMonth, ProgrammeLayout::lastMonth);
    }
}

} // namespace

int leadingNumber(QByteArrayView line)
{
    auto at = line.begin();
    const auto end = line.end();
    while (at != end && (*at == ' ' || *at == '\t'))
        ++at;
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+'))
        ++at;

    int whole = 0;
    for (; at != end && isDigit(*at); ++at)
        whole = std::min(tooLarge, whole * 10 + (*at - '0'));

    if (at != end && *at == '.') {
        const auto fraction = at + 1;
        const auto fractionEnd = std::find_if_not(fraction, end, isDigit);
        const char tenths = fraction != fractionEnd ? *fraction : '0';
        const bool half = tenths == '5' &&
                          std::all_of(fraction + 1, fractionEnd, [](char c) { return c == '0'; });
        const bool roundsUp = half ? whole % 2 != 0 : tenths >= '5';
        whole = std::min(tooLarge, whole + (roundsUp ? 1 : 0));
    }
    return negative ? -whole : whole;
}

QByteArray text(const Programme& programme, ClockModel model)
{
    const AlarmEncoding& encoding = AlarmEncoding::of(model);
    LineWriter lines;
    int number = 0;
    for (const AlarmBlock& block : programme.blocks) {
        lines.line("--AVISOS " + QByteArray::number(++number) + "--");
        lines.number(block.Duration);
        lines.number(block.Mode);
        for (const Alarm& alarm : block.Alarms) {
            lines.number(alarm.Hour);
            lines.number(alarm.Minute);
            lines.number(encoding.mask(alarm, block.Mode));
        }
    }
    lines.line("--FESTIVOS--");
    for (const Holiday& holiday : programme.table.holidays) {
        lines.number(holiday.Day);
        lines.number(holiday.Month);
    }
    lines.line("--PERIODOS VACACIONALES--");
    for (const VacationPeriod& period : programme.table.vacations) {
        lines.number(period.StartDay);
        lines.number(period.StartMonth);
        lines.number(period.EndDay);
        lines.number(period.EndMonth);
    }
    return lines.take();
}

void read(const QByteArray& text, Programme& programme, ClockModel model)
{
    LineReader lines(text);
    for (AlarmBlock& block : programme.blocks)
        readBlock(lines, block, model);
    readTable(lines, programme.table);
}

Programme programmeIn(const QByteArray& text, ClockModel model)
{
    Programme programme;
    // Only the reading for this model takes durations and modes.
    read(text, programme, ClockModel::Hct7300);
    for (AlarmBlock& block : programme.blocks)
        block.Alarms = {};
    read(text, programme, model);
    return programme;
}

ClockModel likelyModel(const QByteArray& text)
{
    constexpr std::array<int, Programme::blockCount> modes{2, 101, 200};
    const ProgrammeLayout layout(text);
    for (const int mode : modes)
        if (const auto line = layout.text(mode)) {
            const int number = leadingNumber(*line);
            if (number > 1 && number <= 255)
                return ClockModel::Hct7300;
        }
    return ClockModel::Hct7200;
}

bool save(const QString& path, const Programme& programme, ClockModel model)
{
    return WholeFile::replace(path, text(programme, model));
}

bool load(const QString& path, Programme& programme, ClockModel model)
{
    const auto bytes = WholeFile::read(path, maximumBytes);
    if (!bytes)
        return false;
    read(*bytes, programme, model);
    return true;
}

} // namespace ProgrammeFile
