#include "ProgrammeFileCommands.h"

#include "CommandLine.h"
#include "ProgrammeFileReport.h"
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
            if (text == u"7200" || text == u"7300")
                return QString();
            return u"\"%1\" no es un modelo: indique 7200 o 7300"_s.arg(text);
        }));
    return verb;
}

/// Calls one of the functions that report on a file.
AloneAction reportOn(const std::shared_ptr<FileOptions>& options,
                     ExitStatus (*report)(const QString&, const QString&, Console&))
{
    return [options, report](Console& console) {
        return report(QString::fromStdString(options->file), QString::fromStdString(options->model),
                      console);
    };
}

} // namespace

void addProgrammeFileCommands(CommandLine& commandLine, CLI::App& group)
{
    const auto options = std::make_shared<FileOptions>();
    const CLI::App& check = addFileVerb(commandLine, group, "check",
                                        "Dice todo lo que no está bien en un archivo", options);
    commandLine.runsAlone(check, reportOn(options, programmefilereport::check));
    const CLI::App& show =
        addFileVerb(commandLine, group, "show", "Muestra el programa de un archivo", options);
    commandLine.runsAlone(show, reportOn(options, programmefilereport::show));
    CLI::App& diff = addFileVerb(commandLine, group, "diff",
                                 "Dice en qué difieren los programas de dos archivos", options);
    commandLine.addFile(diff, "OTHER", options->otherFile, "El archivo con que se compara");
    commandLine.runsAlone(diff, [options](Console& console) {
        return programmefilereport::compare(QString::fromStdString(options->file),
                                            QString::fromStdString(options->otherFile),
                                            QString::fromStdString(options->model), console);
    });
}
