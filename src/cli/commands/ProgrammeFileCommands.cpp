#include "ProgrammeFileCommands.h"

#include "CommandLine.h"
#include "Console.h"
#include "ProgrammeFile.h"
#include "ProgrammeInput.h"
#include "ProgrammeJson.h"
#include "ProgrammeTable.h"
#include "ProgrammeTexts.h"
#include "Validators.h"

using namespace Qt::StringLiterals;

namespace {

struct FileOptions {
    std::string file;
    std::string otherFile;
    /// "7200", "7300", or empty.
    std::string model;
};

CLI::App& addFileVerb(CommandLine& commandLine, CLI::App& group, const char* name,
                      const char* description, const std::shared_ptr<FileOptions>& options)
{
    CLI::App& verb = commandLine.addVerb(group, name, description);
    commandLine.addFile(verb, "FILE", options->file, "Archivo de configuración (.hct)");
    verb.add_option("--model", options->model,
                    "Modelo del reloj; si no, el que parece por el archivo")
        ->type_name("7200|7300")
        ->check(validators::makeValidator([](const QString& text) {
            return text == u"7200" || text == u"7300"
                       ? QString()
                       : u"\"%1\" no es un modelo: indique 7200 o 7300"_s.arg(text);
        }));
    return verb;
}

QString pathIn(const std::string& option) { return QString::fromStdString(option); }

/// The model that was given, or else the likely one, which is told.
ClockModel modelOf(const FileOptions& options, const QList<QByteArray>& texts, Console& console)
{
    if (!options.model.empty())
        return options.model == "7200" ? ClockModel::Hct7200 : ClockModel::Hct7300;
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

ExitStatus checkFile(const FileOptions& options, Console& console)
{
    const ProgrammeInput input(pathIn(options.file));
    if (!input.isReadable())
        return console.refuse(*input.refusal());
    const ClockModel model = modelOf(options, {input.text()}, console);
    const auto problems = ProgrammeCheck::problemsOf(input.text(), model);
    const bool good = !ProgrammeCheck::hasErrors(problems);
    QStringList lines;
    for (const auto& problem : problems)
        lines.append(lineOf(problem));
    if (good)
        lines.append(u"El archivo sirve para un %1."_s.arg(ProgrammeTexts::modelName(model)));
    console.print({{u"model"_s, ProgrammeTexts::modelName(model)},
                   {u"good"_s, good},
                   {u"problems"_s, ProgrammeJson::array(problems)}},
                  lines.join(u'\n'));
    return good ? ExitStatus::Done : ExitStatus::Usage;
}

ExitStatus showFile(const FileOptions& options, Console& console)
{
    const ProgrammeInput input(pathIn(options.file));
    if (!input.isReadable())
        return console.refuse(*input.refusal());
    const ClockModel model = modelOf(options, {input.text()}, console);
    if (ProgrammeCheck::hasErrors(ProgrammeCheck::problemsOf(input.text(), model)))
        console.tell(
            u"El archivo no está bien; los problemas se ven con: hctctl programme check %1"_s.arg(
                input.path()));
    const Programme programme = ProgrammeFile::programmeIn(input.text(), model);
    console.print(ProgrammeJson::object(programme, model),
                  ProgrammeTable::text(programme, model).chopped(1));
    return ExitStatus::Done;
}

ExitStatus compareFiles(const FileOptions& options, Console& console)
{
    const ProgrammeInput before(pathIn(options.file));
    const ProgrammeInput after(pathIn(options.otherFile));
    for (const ProgrammeInput* input : {&before, &after})
        if (const auto refusal = input->refusal())
            return console.refuse(*refusal);
    const ClockModel model = modelOf(options, {before.text(), after.text()}, console);
    const auto entries =
        ProgrammeDifference::between(ProgrammeFile::programmeIn(before.text(), model),
                                     ProgrammeFile::programmeIn(after.text(), model), model);
    if (console.isJson())
        console.print({{u"model"_s, ProgrammeTexts::modelName(model)},
                       {u"equal"_s, entries.isEmpty()},
                       {u"differences"_s, ProgrammeJson::array(entries)}});
    else
        for (const auto& entry : entries)
            console.print(entry.text);
    if (entries.isEmpty())
        console.note(u"Los dos programas son iguales."_s);
    return entries.isEmpty() ? ExitStatus::Done : ExitStatus::Refused;
}

} // namespace

void addProgrammeFileCommands(CommandLine& commandLine, CLI::App& group)
{
    const auto options = std::make_shared<FileOptions>();
    const CLI::App& check = addFileVerb(commandLine, group, "check",
                                        "Dice todo lo que no está bien en un archivo", options);
    commandLine.runsAlone(check,
                          [options](Console& console) { return checkFile(*options, console); });
    const CLI::App& show =
        addFileVerb(commandLine, group, "show", "Muestra el programa de un archivo", options);
    commandLine.runsAlone(show,
                          [options](Console& console) { return showFile(*options, console); });
    CLI::App& diff = addFileVerb(commandLine, group, "diff",
                                 "Dice en qué difieren los programas de dos archivos", options);
    commandLine.addFile(diff, "OTHER", options->otherFile, "El archivo con que se compara");
    commandLine.runsAlone(diff,
                          [options](Console& console) { return compareFiles(*options, console); });
}
