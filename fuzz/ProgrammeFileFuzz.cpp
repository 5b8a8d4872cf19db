#include "Input.h"
#include "ProgrammeFile.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace {

/// Removes the characters at the beginning of `text` that are `wanted`, and returns them.
template<typename Wanted>
std::string_view takeWhile(std::string_view& text, Wanted wanted)
{
    const auto end = std::find_if_not(text.begin(), text.end(), wanted);
    const std::string_view taken = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(taken.size());
    return taken;
}

bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// A run of digits as a whole number, at most 1000000.
int wholeNumber(std::string_view digits)
{
    takeWhile(digits, [](char c) { return c == '0'; });
    if (digits.size() > 7)
        return 1'000'000;
    int number = 0;
    std::from_chars(digits.begin(), digits.end(), number);
    return std::min(1'000'000, number);
}

/// The number at the beginning of a line, rounded by its decimal digits.
int numberOf(std::string_view line)
{
    takeWhile(line, [](char c) { return c == ' ' || c == '\t'; });
    const bool negative = line.starts_with('-');
    if (negative || line.starts_with('+'))
        line.remove_prefix(1);
    int number = wholeNumber(takeWhile(line, isDigit));
    if (line.starts_with('.')) {
        line.remove_prefix(1);
        std::string_view fraction = takeWhile(line, isDigit);
        fraction = fraction.substr(0, fraction.find_last_not_of('0') + 1);
        if (fraction > "5" || (fraction == "5" && number % 2 == 1))
            number = std::min(1'000'000, number + 1);
    }
    return negative ? -number : number;
}

/// Reads the lines of a configuration one by one.
class Lines {
public:
    explicit Lines(std::string_view text) : m_rest(text) {}

    void skip() { takeLine(); }
    /// The next number, 0 when it is not from 0 to `last`; `otherwise` after the end of the text.
    int number(int last, int otherwise)
    {
        if (m_rest.empty())
            return otherwise;
        const int number = numberOf(takeLine());
        return number < 0 || number > last ? 0 : number;
    }
    /// The same for a byte, of which one out of its range changes nothing.
    int byte(int otherwise)
    {
        if (m_rest.empty())
            return otherwise;
        const int number = numberOf(takeLine());
        return number < 0 || number > 255 ? otherwise : number;
    }

private:
    std::string_view takeLine()
    {
        const std::string_view line = m_rest.substr(0, m_rest.find('\n'));
        m_rest.remove_prefix(std::min(m_rest.size(), line.size() + 1));
        return line;
    }

    std::string_view m_rest;
};

/// The mask of an alarm whose flags were all clear, as bits: Monday 0 to vacation 8. Without a line
/// -1.
int flagsOf(int mask, bool singleDays)
{
    if (mask < 0)
        return 0;
    if (singleDays)
        return mask;
    const int workingDays = (mask & 0x10) != 0 ? 0x1F : 0;
    return workingDays | (mask & 0x0F) << 5;
}

int flagBits(const Alarm& alarm)
{
    int bits = 0;
    for (std::size_t day = 0; day < alarm.flags.size(); ++day)
        bits |= alarm.flags[day] ? 1 << day : 0;
    return bits;
}

void checkBlock(Lines& lines, const AlarmBlock& block, ClockModel model)
{
    lines.skip();
    if (model == ClockModel::Hct7200) {
        lines.skip();
        lines.skip();
        require(block.Duration == 0 && block.Mode == 0);
    } else {
        require(block.Duration == lines.byte(0));
        require(block.Mode == lines.byte(0));
    }
    for (const Alarm& alarm : block.Alarms) {
        require(alarm.Hour == lines.number(23, 0));
        require(alarm.Minute == lines.number(59, 0));
        require(flagBits(alarm) == flagsOf(lines.number(31, -1), block.Mode < 2));
    }
}

void checkTable(Lines& lines, const HolidayTable& table)
{
    lines.skip();
    for (const Holiday& holiday : table.holidays) {
        require(holiday.Day == lines.number(31, 0));
        require(holiday.Month == lines.number(12, 0));
    }
    lines.skip();
    for (const VacationPeriod& period : table.vacations) {
        require(period.StartDay == lines.number(31, 0));
        require(period.StartMonth == lines.number(12, 0));
        require(period.EndDay == lines.number(31, 0));
        require(period.EndMonth == lines.number(12, 0));
    }
}

} // namespace

/// Any text. Each value must be what its line says, in its range. Of the texts one length in 16 is
/// saved and read again, which takes much longer than reading, and stays the same. The first byte
/// of the input chooses the model.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    Input input(bytes, size);
    const ClockModel model = (input.byte() & 1) != 0 ? ClockModel::Hct7300 : ClockModel::Hct7200;
    const QByteArray text = input.rest();
    Programme programme;
    ProgrammeFile::read(text, programme, model);

    Lines lines({text.constData(), static_cast<std::size_t>(text.size())});
    for (const AlarmBlock& block : programme.blocks)
        checkBlock(lines, block, model);
    checkTable(lines, programme.table);
    if (text.size() % 16 != 0)
        return 0;

    Programme again = programme;
    ProgrammeFile::read(text, again, model);
    require(again == programme);
    ProgrammeFile::read(ProgrammeFile::text(programme, model), again, model);
    require(again == programme);
    return 0;
}
