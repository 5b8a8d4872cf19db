#include "CommandLine.h"
#include "Commands.h"
#include "Console.h"
#include "FirmwareSendJob.h"

using namespace Qt::StringLiterals;

namespace {

struct SendOptions {
    std::string file;
    bool reset = false;
    bool withoutQuestion = false;
    HexFile image;
};

/// Why the loaded file must not be sent and what to do; empty when it may.
QString refusalOf(HexFile::Outcome outcome, const HexFile& image)
{
    switch (outcome) {
    case HexFile::Outcome::ReadError:
        return u"no se puede leer, o tiene más de 32767 líneas; compruebe el nombre y los "
               "permisos"_s;
    case HexFile::Outcome::FormatError:
        return u"no es un archivo Intel HEX, o está dañado o incompleto; cópielo otra vez del "
               "original"_s;
    case HexFile::Outcome::Loaded: break;
    }
    return image.LineCount() < 1 ? u"no contiene datos; compruebe que es el firmware del reloj"_s
                                 : QString();
}

QString questionAbout(const SendOptions& options)
{
    const QString erasure =
        options.reset ? u", y el reloj borrará toda su memoria, también su programa"_s : QString();
    return u"Se va a cambiar el firmware del reloj por el de %1 (%2)%3. Si se interrumpe, "
           "el reloj se queda con media imagen. ¿Enviarlo?"_s.arg(
               QString::fromStdString(options.file),
               FirmwareSendJob::linesText(options.image.LineCount()), erasure);
}

/// Done for a yes.
ExitStatus consent(Console::Answer answer, Console& console)
{
    using Kind = Console::Answer::Kind;
    switch (answer.kind) {
    case Kind::Yes: return ExitStatus::Done;
    case Kind::No: return console.refuse(u"No se ha enviado nada."_s);
    case Kind::NobodyAsked:
        return console.refuse(u"No se puede preguntar sin terminal, y no se ha enviado nada; para "
                              "enviar sin pregunta, indique --yes."_s);
    case Kind::Interrupted: break;
    }
    console.tell(u"Interrumpido. No se ha enviado nada."_s);
    return endedBySignal(answer.signalNumber);
}

/// Loads the file, and asks whether to send it.
ExitStatus prepare(SendOptions& options, Console& console)
{
    const QString path = QString::fromStdString(options.file);
    const QString refusal = refusalOf(options.image.LoadHexFile(path), options.image);
    if (!refusal.isEmpty())
        return console.refuse(u"%1: %2."_s.arg(path, refusal));
    if (options.withoutQuestion)
        return ExitStatus::Done;
    return consent(Console::confirm(questionAbout(options)), console);
}

} // namespace

void addFirmwareCommands(CommandLine& commandLine)
{
    CLI::App& group = commandLine.addGroup("firmware", "Firmware del reloj");
    CLI::App& send =
        commandLine.addVerb(group, "send", "Envía al reloj el firmware de un archivo Intel HEX");
    const auto options = std::make_shared<SendOptions>();
    commandLine.addFile(send, "FILE", options->file, "Archivo de firmware (.hex)");
    send.add_flag("--reset", options->reset,
                  "Tras el envío el reloj borra toda su memoria y se reinicia");
    send.add_flag("--yes", options->withoutQuestion,
                  "No pregunta antes de enviar; hace falta donde no hay terminal");
    commandLine.runsWithClock(
        send,
        [options](Session& session, Console& console, const CommonOptions&) {
            using Reset = FirmwareSendJob::Reset;
            return std::make_unique<FirmwareSendJob>(
                session, console, options->image, options->reset ? Reset::Wanted : Reset::Omitted);
        },
        [options](Console& console) { return prepare(*options, console); });
}
