#include "StrictLines.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using ProblemKind = ProgrammeProblem::Kind;

bool isWholeNumber(QByteArrayView text)
{
    if (text.startsWith('-'))
        text = text.sliced(1);
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// A text of the file as it can be shown: a part of it, without control characters.
QString shown(QByteArrayView text)
{
    constexpr qsizetype longest = 24;
    QString part = QString::fromUtf8(text.first(std::min(text.size(), longest)));
    for (QChar& character : part)
        if (!character.isPrint())
            character = u'?';
    return text.size() > longest ? part + u'…' : part;
}

} // namespace

StrictLines::StrictLines(QByteArrayView text) : m_layout(withoutMark(text))
{
    for (const ProgrammeLayout::Gap& gap : m_layout.gaps())
        noteGap(gap);
    noteEnd();
}

QByteArrayView StrictLines::withoutMark(QByteArrayView text)
{
    constexpr QByteArrayView mark("\xef\xbb\xbf");
    if (!text.startsWith(mark))
        return text;
    note(ProblemKind::Doubtful, 1,
         u"El archivo empieza con una marca de UTF-8 (BOM), que no se ve y sobra: guárdelo sin "
         u"ella. "
         "El programa se lee bien."_s);
    return text.sliced(mark.size());
}

void StrictLines::header()
{
    const QByteArrayView expected = ProgrammeLayout::field(m_field).header;
    const std::optional<QByteArrayView> line = m_layout.text(m_field++);
    if (!line || *line == expected)
        return;
    note(ProblemKind::Doubtful, this->line(),
         u"Aquí debe estar la cabecera %1 y dice «%2»."_s.arg(QLatin1StringView(expected),
                                                              shown(*line)));
}

std::optional<quint8> StrictLines::number(const QString& what, const QString& hint)
{
    const int last = ProgrammeLayout::field(m_field).last;
    const std::optional<QByteArrayView> text = m_layout.text(m_field++);
    if (!text)
        return std::nullopt;
    if (!isWholeNumber(*text)) {
        note(ProblemKind::Misread, line(),
             u"%1: «%2» no es un número entero."_s.arg(what, shown(*text)));
        return std::nullopt;
    }
    bool fits = false;
    const int value = text->toInt(&fits);
    if (fits && value >= 0 && value <= last)
        return static_cast<quint8>(value);
    note(ProblemKind::Misread, line(),
         u"%1: %2 no está entre 0 y %3%4."_s.arg(what, shown(*text)).arg(last).arg(hint));
    return std::nullopt;
}

void StrictLines::noteGap(const ProgrammeLayout::Gap& gap)
{
    const QLatin1StringView block(gap.block());
    const int count = qAbs(gap.surplus);
    const QString lines = count == 1 ? u"a una línea"_s : u"an %1 líneas"_s.arg(count);
    QString text = u"En %1 "_s.arg(block);
    if (gap.isMissingHeader())
        text = u"Aquí falta la cabecera %1."_s.arg(block);
    else if (gap.surplus < 0)
        text += u"falt%1, "_s.arg(lines) +
                (gap.first == 1 ? u"antes de la %1."_s.arg(gap.last)
                                : u"entre la %1 y la %2."_s.arg(gap.first - 1).arg(gap.last));
    else if (count == 1 && gap.first == gap.last)
        text += u"sobra esta línea."_s;
    else
        text += u"sobr%1, de la %2 a la %3."_s.arg(lines).arg(gap.first).arg(gap.last + count - 1);
    note(ProblemKind::Misread, gap.first, text);
}

void StrictLines::noteEnd()
{
    const int surplus = m_layout.surplusAtEnd();
    const int lineCount = m_layout.lineCount();
    if (surplus == -1)
        note(ProblemKind::Misread, lineCount + 1,
             u"Falta la última línea, la %1."_s.arg(lineCount + 1));
    else if (surplus < 0)
        note(ProblemKind::Misread, lineCount + 1,
             u"El archivo termina antes: faltan las líneas %1 a %2."_s.arg(lineCount + 1)
                 .arg(lineCount - surplus));
    else if (surplus > 0)
        note(ProblemKind::Misread, lineCount - surplus + 1,
             u"Sobra lo que sigue: un archivo de configuración tiene %1 líneas."_s.arg(
                 ProgrammeLayout::fieldCount));
}

void StrictLines::note(ProblemKind kind, int line, const QString& text)
{
    m_problems.append({kind, line, text});
}
