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

StrictLines::StrictLines(QByteArrayView text) : m_rest(text)
{
    constexpr QByteArrayView mark("\xef\xbb\xbf");
    if (!text.startsWith(mark))
        return;
    m_rest = text.sliced(mark.size());
    note(ProblemKind::Doubtful, 1,
         u"El archivo empieza con una marca de UTF-8 (BOM), que no se ve y sobra: guárdelo sin "
         u"ella. "
         "El programa se lee bien."_s);
}

std::optional<QByteArrayView> StrictLines::next()
{
    ++m_line;
    if (m_rest.isEmpty()) {
        if (m_firstMissing == 0)
            m_firstMissing = m_line;
        return std::nullopt;
    }
    const auto end = std::find(m_rest.begin(), m_rest.end(), '\n');
    const QByteArrayView line(m_rest.begin(), end);
    m_rest = m_rest.sliced(end == m_rest.end() ? m_rest.size() : line.size() + 1);
    return line.trimmed();
}

void StrictLines::header(QByteArrayView expected)
{
    const std::optional<QByteArrayView> line = next();
    if (!line || *line == expected)
        return;
    note(ProblemKind::Doubtful, m_line,
         u"Aquí debe estar la cabecera %1 y dice «%2»."_s.arg(QLatin1StringView(expected),
                                                              shown(*line)));
}

std::optional<quint8> StrictLines::number(const QString& what, int last, const QString& hint)
{
    const std::optional<QByteArrayView> line = next();
    if (!line)
        return std::nullopt;
    if (!isWholeNumber(*line)) {
        note(ProblemKind::Misread, m_line,
             u"%1: «%2» no es un número entero."_s.arg(what, shown(*line)));
        return std::nullopt;
    }
    bool fits = false;
    const int value = line->toInt(&fits);
    if (fits && value >= 0 && value <= last)
        return static_cast<quint8>(value);
    note(ProblemKind::Misread, m_line,
         u"%1: %2 no está entre 0 y %3%4."_s.arg(what, shown(*line)).arg(last).arg(hint));
    return std::nullopt;
}

void StrictLines::end()
{
    if (m_firstMissing != 0)
        note(ProblemKind::Misread, m_firstMissing,
             m_firstMissing == m_line
                 ? u"Falta la última línea, la %1."_s.arg(m_line)
                 : u"El archivo termina antes: faltan las líneas %1 a %2."_s.arg(m_firstMissing)
                       .arg(m_line));
    else if (!m_rest.isEmpty())
        note(ProblemKind::Misread, m_line + 1,
             u"Sobra lo que sigue: un archivo de configuración tiene %1 líneas."_s.arg(m_line));
}

void StrictLines::note(ProblemKind kind, int line, const QString& text)
{
    m_problems.append({kind, line, text});
}
