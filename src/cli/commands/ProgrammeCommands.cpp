#include "CommandLine.h"
#include "Commands.h"
#include "Console.h"
#include "ProgrammeFileCommands.h"
#include "ProgrammeInput.h"
#include "ProgrammeReadJob.h"
#include "ProgrammeVerifyJob.h"
#include "ProgrammeWriteJob.h"

namespace {

struct TransferOptions {
    std::string file;
    bool withoutVerification = false;
    /// The file, when it is to be sent or compared.
    std::optional<ProgrammeInput> input;
};

CLI::App& addTransferVerb(CommandLine& commandLine, CLI::App& group, const char* name,
                          const char* description, const std::shared_ptr<TransferOptions>& options)
{
    CLI::App& verb = commandLine.addVerb(group, name, description);
    commandLine.addFile(verb, "FILE", options->file, "Archivo de configuración (.hct)");
    return verb;
}

/// Reads the file before anything is asked of the clock.
AloneAction inputOf(const std::shared_ptr<TransferOptions>& options)
{
    return [options](Console& console) {
        options->input.emplace(QString::fromStdString(options->file));
        if (const auto refusal = options->input->refusal())
            return console.refuse(*refusal);
        return ExitStatus::Done;
    };
}

} // namespace

void addProgrammeCommands(CommandLine& commandLine)
{
    CLI::App& group = commandLine.addGroup("programme", "Programas de avisos: reloj y archivos");
    const auto options = std::make_shared<TransferOptions>();
    const CLI::App& read = addTransferVerb(commandLine, group, "read",
                                           "Guarda el programa del reloj en un archivo", options);
    commandLine.runsWithClock(read,
                              [options](Session& session, Console& console, const CommonOptions&) {
                                  return std::make_unique<ProgrammeReadJob>(
                                      session, console, QString::fromStdString(options->file));
                              });

    CLI::App& write = addTransferVerb(commandLine, group, "write",
                                      "Envía un archivo al reloj y lo comprueba", options);
    write.add_flag("--no-verify", options->withoutVerification, "No comprueba lo enviado");
    commandLine.runsWithClock(
        write,
        [options](Session& session, Console& console, const CommonOptions& common) {
            using Verification = ProgrammeWriteJob::Verification;
            return std::make_unique<ProgrammeWriteJob>(
                session, console, common, *options->input,
                options->withoutVerification ? Verification::Omitted : Verification::Wanted);
        },
        inputOf(options));

    const CLI::App& verify = addTransferVerb(
        commandLine, group, "verify", "Compara un archivo con el programa del reloj", options);
    commandLine.runsWithClock(
        verify,
        [options](Session& session, Console& console, const CommonOptions& common) {
            return std::make_unique<ProgrammeVerifyJob>(session, console, common, *options->input);
        },
        inputOf(options));
    addProgrammeFileCommands(commandLine, group);
}
