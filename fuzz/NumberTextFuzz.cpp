#include "Input.h"
#include "NumberText.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

const std::array<NumberText, 3>& controls()
{
    static const std::array all = {NumberText({{0, 23, 2}, {0, 59, 2}}, u':'),
                                   NumberText({{1, 31, 2}, {1, 12, 2}, {0, 9999, 4}}, u'/'),
                                   NumberText({{0, 255, 1}}, u' ')};
    return all;
}

std::vector<std::string> digitRuns(const QString& text)
{
    std::vector<std::string> runs;
    for (qsizetype at = 0; at < std::min<qsizetype>(text.size(), 64); ++at) {
        if (text[at] < u'0' || text[at] > u'9')
            continue;
        if (at == 0 || text[at - 1] < u'0' || text[at - 1] > u'9')
            runs.emplace_back();
        runs.back() += static_cast<char>(text[at].unicode());
    }
    return runs;
}

int limited(const NumberText& control, int field, const std::string& digits)
{
    const auto& [minimum, maximum, width, name] = control.field(field);
    const std::string most = std::to_string(maximum);
    return std::clamp(std::stoi(digits.substr(0, most.size())), minimum, maximum);
}

/// The numbers after a text was pasted into `field`, read digit by digit.
QList<int> pastedInto(const NumberText& control, const QString& text, QList<int> values, int field)
{
    const auto count = static_cast<std::size_t>(values.size());
    std::vector<std::string> runs = digitRuns(text);
    const auto most = [&](std::size_t index) {
        return std::to_string(control.field(static_cast<int>(index)).maximum).size();
    };
    if (runs.size() >= count)
        field = 0;
    if (runs.size() == 1 && runs[0].size() > most(static_cast<std::size_t>(field))) {
        const std::string run = runs[0];
        runs.clear();
        field = 0;
        std::size_t at = 0;
        for (std::size_t index = 0; index < count && at < run.size(); at += most(index++))
            runs.push_back(run.substr(at, most(index)));
    }
    for (const std::string& run : runs)
        if (field < values.size()) {
            values[field] = limited(control, field, run);
            ++field;
        }
    return values;
}

void checkPasted(const NumberText& control, const QString& text, const QList<int>& before,
                 int field)
{
    const QList<int> after = control.pasted(text, before, field);
    require(after == pastedInto(control, text, before, field));
    require(text.size() <= 64 || control.pasted(text.left(64), before, field) == after);
    require(control.valuesOf(control.textOf(after)) == after);
}

void checkCorrected(const NumberText& control, const QString& text, const QList<int>& before)
{
    const QList<int> corrected = control.corrected(text, before);
    for (int index = 0; index <= control.lastField(); ++index)
        require(corrected[index] == control.clamped(index, corrected[index]));
    require(control.corrected(control.textOf(corrected), before) == corrected);
}

} // namespace

/// Any text is pasted into a time, a date or a number, or set by assistive software. Each number
/// must be what the digits say, in its range; what is shown reads as the same numbers; and nothing
/// behind the 64th character counts. The first byte of the input chooses the control, what is done
/// and the number with the cursor, the second how the bytes are characters.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    Input input(bytes, size);
    const quint8 choice = input.byte();
    const NumberText& control = controls().at(choice % 3);
    const int field = (choice >> 4) % (control.lastField() + 1);
    const bool isUtf8 = (input.byte() & 1) != 0;
    const QString text =
        isUtf8 ? QString::fromUtf8(input.rest()) : QString::fromLatin1(input.rest());

    QList<int> before;
    for (int index = 0; index <= control.lastField(); ++index)
        before.append(control.field(index).maximum);
    if ((choice & 8) != 0)
        checkCorrected(control, text, before);
    else
        checkPasted(control, text, before, field);
    return 0;
}
