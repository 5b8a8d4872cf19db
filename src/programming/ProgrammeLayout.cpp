#include "ProgrammeLayout.h"

#include "Programme.h"

#include <algorithm>

namespace {

constexpr int lastByte = 255;
constexpr std::array<int, 5> headers{0, 99, 198, 297, 330};

std::array<ProgrammeLayout::Field, ProgrammeLayout::fieldCount> makeFields()
{
    std::array<ProgrammeLayout::Field, ProgrammeLayout::fieldCount> fields;
    auto next = fields.begin();
    for (const char* header : {"--AVISOS 1--", "--AVISOS 2--", "--AVISOS 3--"}) {
        *next++ = {header, 0};
        *next++ = {{}, lastByte};
        *next++ = {{}, lastByte};
        for (int alarm = 0; alarm < AlarmBlock::alarmCount; ++alarm)
            for (const int last : {ProgrammeLayout::lastHour, ProgrammeLayout::lastMinute,
                                   ProgrammeLayout::lastMask})
                *next++ = {{}, last};
    }
    for (const char* header : {"--FESTIVOS--", "--PERIODOS VACACIONALES--"}) {
        *next++ = {header, 0};
        for (int date = 0; date < 16; ++date)
            for (const int last : {ProgrammeLayout::lastDay, ProgrammeLayout::lastMonth})
                *next++ = {{}, last};
    }
    return fields;
}

QList<QByteArrayView> linesOf(QByteArrayView text)
{
    QList<QByteArrayView> lines;
    while (!text.isEmpty()) {
        const auto end = std::find(text.begin(), text.end(), '\n');
        const QByteArrayView line(text.begin(), end);
        text = text.sliced(end == text.end() ? text.size() : line.size() + 1);
        lines.append(line.trimmed());
    }
    return lines;
}

} // namespace

const ProgrammeLayout::Field& ProgrammeLayout::field(int index)
{
    static const auto fields = makeFields();
    return fields[static_cast<std::size_t>(index)];
}

QByteArrayView ProgrammeLayout::Gap::block() const
{
    // What is too many just before a header belongs to the block that ends there.
    const int inside = surplus < 0 ? field : std::max(field - 1, 0);
    return ProgrammeLayout::field(*std::prev(std::ranges::upper_bound(headers, inside))).header;
}

bool ProgrammeLayout::Gap::isMissingHeader() const
{
    return surplus == -1 && first == last && std::ranges::find(headers, field) != headers.end();
}

ProgrammeLayout::ProgrammeLayout(QByteArrayView text) : m_texts(linesOf(text))
{
    m_lines.fill(-1);
    int field = 0;
    int line = 0;
    for (const int header : headers)
        if (const auto found = lineOfHeader(header, line + header - field, line)) {
            place({field, header, line, *found});
            field = header;
            line = *found;
        }
    place({field, fieldCount, line, lineCount()});
}

std::optional<QByteArrayView> ProgrammeLayout::text(int field) const
{
    const int line = m_lines[static_cast<std::size_t>(field)];
    if (line < 0)
        return std::nullopt;
    return m_texts[line];
}

bool ProgrammeLayout::fits(int field, int line) const
{
    const Field& wanted = ProgrammeLayout::field(field);
    const QByteArrayView text = m_texts[line];
    if (!wanted.header.isEmpty())
        return text == wanted.header;
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    return isNumber && value >= 0 && value <= wanted.last;
}

std::optional<int> ProgrammeLayout::lineOfHeader(int header, int expected, int line) const
{
    if (expected < lineCount() && fits(header, expected))
        return expected;
    for (int at = line; at < lineCount(); ++at)
        if (fits(header, at))
            return at;
    return std::nullopt;
}

void ProgrammeLayout::place(const Span& span)
{
    if (span.endField - span.field != span.endLine - span.line)
        return placeAround(span);
    for (int i = 0; i < span.endField - span.field; ++i)
        setLine(span.field + i, span.line + i);
}

void ProgrammeLayout::placeAround(const Span& span)
{
    const int fields = span.endField - span.field;
    const int surplus = span.endLine - span.line - fields;
    const int kept = std::min(fields, fields + surplus);
    const auto fromEnd = [&](int i) {
        return fits(span.endField - kept + i, span.endLine - kept + i);
    };
    // How many fit when the first `split` lines are before the gap, and the others after it.
    int fitting = 0;
    for (int i = 0; i < kept; ++i)
        fitting += fromEnd(i) ? 1 : 0;
    int best = fitting;
    int first = 0;
    int last = 0;
    for (int split = 1; split <= kept; ++split) {
        fitting += fits(span.field + split - 1, span.line + split - 1) ? 1 : 0;
        fitting -= fromEnd(split - 1) ? 1 : 0;
        if (fitting > best)
            first = split;
        if (fitting >= best)
            last = split;
        best = std::max(best, fitting);
    }
    if (span.endField == fieldCount && last == kept) {
        m_surplusAtEnd = surplus;
        first = kept;
    } else
        m_gaps.append({surplus, span.line + first + 1, span.line + last + 1, span.field + first});
    for (int i = 0; i < first; ++i)
        setLine(span.field + i, span.line + i);
    for (int i = last; i < kept; ++i)
        setLine(span.endField - kept + i, span.endLine - kept + i);
}
