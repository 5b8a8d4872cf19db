#include "ProgrammeFileReport.h"

#include "Console.h"
#include "ProgrammeFile.h"
#include "ProgrammeInput.h"
#include "ProgrammeJson.h"
#include "ProgrammeTable.h"
#include "ProgrammeTexts.h"
#include "ShellWord.h"

using namespace Qt::StringLiterals;

namespace {

/// The model that was given, or else the likely one, which is told.
ClockModel modelOf(const QString& given, const QList<QByteArray>& texts, Console& console)
{
    if (!given.isEmpty())
        return given == u"7200" ? ClockModel::Hct7200 : ClockModel::Hct7300;
    ClockModel model = ClockModel::Hct7200;
    for (const QByteArray& text : texts)
        if (ProgrammeFile::likelyModel(text) == ClockModel::Hct7300)
            model = ClockModel::Hct7300;
    console.note(model == ClockModel::Hct7300
                     ? u"Se toma como de un HCT-7300, porque hay modos mayores que 1; si no lo es, "
                       "indique --model 7200."_s
                     : u"Se toma como de un HCT-7200; si no lo es, indique --model 7300."_s);
    return model;
}

QString lineOf(const ProgrammeCheck::Problem& problem)
{
    const QString text = problem.kind == ProgrammeCheck::Problem::Kind::Doubtful
                             ? u"advertencia: %1"_s.arg(problem.text)
                             : problem.text;
    return problem.line == 0 ? text : u"Línea %1: %2"_s.arg(problem.line).arg(text);
}

} // namespace

ExitStatus programmefilereport::check(const QString& path, const QString& model, Console& console)
{
    const ProgrammeInput input(path);
    if (!input.isReadable())
        return console.refuse(*input.refusal());
    const ClockModel clock = modelOf(model, {input.text()}, console);
    const auto problems = ProgrammeCheck::problemsOf(input.text(), clock);
    const bool good = !ProgrammeCheck::hasErrors(problems);
    QStringList lines;
    for (const auto& problem : problems)
        lines.append(lineOf(problem));
    if (good)
        lines.append(u"El archivo sirve para un %1."_s.arg(ProgrammeTexts::modelName(clock)));
    console.print({{u"model"_s, ProgrammeTexts::modelName(clock)},
                   {u"good"_s, good},
                   {u"problems"_s, ProgrammeJson::array(problems)}},
                  lines.join(u'\n'));
    return good ? ExitStatus::Done : ExitStatus::Usage;
}

ExitStatus programmefilereport::show(const QString& path, const QString& model, Console& console)
{
    const ProgrammeInput input(path);
    if (!input.isReadable())
        return console.refuse(*input.refusal());
    const ClockModel clock = modelOf(model, {input.text()}, console);
    if (ProgrammeCheck::hasErrors(ProgrammeCheck::problemsOf(input.text(), clock)))
        console.tell(
            u"El archivo no está bien; los problemas se ven con: hctctl programme check %1"_s.arg(
                shellWord(input.path())));
    const Programme programme = ProgrammeFile::programmeIn(input.text(), clock);
    console.print(ProgrammeJson::object(programme, clock),
                  ProgrammeTable::text(programme, clock).chopped(1));
    return ExitStatus::Done;
}

ExitStatus programmefilereport::compare(const QString& path, const QString& otherPath,
                                        const QString& model, Console& console)
{
    const ProgrammeInput before(path);
    const ProgrammeInput after(otherPath);
    for (const ProgrammeInput* input : {&before, &after})
        if (const auto refusal = input->refusal())
            return console.refuse(*refusal);
    const ClockModel clock = modelOf(model, {before.text(), after.text()}, console);
    const auto entries =
        ProgrammeDifference::between(ProgrammeFile::programmeIn(before.text(), clock),
                                     ProgrammeFile::programmeIn(after.text(), clock), clock);
    if (console.isJson())
        console.print({{u"model"_s, ProgrammeTexts::modelName(clock)},
                       {u"equal"_s, entries.isEmpty()},
                       {u"differences"_s, ProgrammeJson::array(entries)}});
    else
        for (const auto& entry : entries)
            console.print(entry.text);
    if (entries.isEmpty())
        console.note(u"Los dos programas son iguales."_s);
    return entries.isEmpty() ? ExitStatus::Done : ExitStatus::Refused;
}
