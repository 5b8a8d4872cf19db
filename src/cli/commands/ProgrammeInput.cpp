#include "ProgrammeInput.h"

#include "ProgrammeCheck.h"
#include "ProgrammeFile.h"
#include "WholeFile.h"

#include <algorithm>

using namespace Qt::StringLiterals;

ProgrammeInput::ProgrammeInput(const QString& path) : m_path(path)
{
    const auto bytes = WholeFile::read(path, ProgrammeFile::maximumBytes + 1);
    m_isReadable = bytes.has_value();
    m_text = bytes.value_or(QByteArray());
}

std::optional<QString> ProgrammeInput::refusal() const
{
    using Problem = ProgrammeCheck::Problem;
    if (!m_isReadable)
        return u"%1: no se puede leer el archivo; compruebe el nombre y los permisos."_s.arg(
            m_path);
    // What is misread is so for both models.
    const QList<Problem> problems =
        ProgrammeCheck::problemsOf(m_text, ProgrammeFile::likelyModel(m_text));
    const auto first = std::find_if(problems.begin(), problems.end(), [](const Problem& problem) {
        return problem.kind == Problem::Kind::Misread;
    });
    if (first == problems.end())
        return std::nullopt;
    const QString place = first->line == 0 ? QString() : u" (línea %1)"_s.arg(first->line);
    return u"%1: %2%3; con \"programme check\" se ve todo lo que no está bien."_s.arg(
        m_path, first->text.chopped(1), place);
}
