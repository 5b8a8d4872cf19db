#include "CommandLine.h"
#include "Commands.h"
#include "CommonOptions.h"
#include "Console.h"
#include "OwnPortNames.h"
#include "PortList.h"
#include "SystemEnvironment.h"
#include "Validators.h"

using namespace Qt::StringLiterals;

namespace {

/// The texts that the parser writes to.
struct NameOptions {
    std::string port;
    std::string device;
};

ExitStatus listPorts(Console& console)
{
    SystemEnvironment system;
    const PortList ports = PortList::ofThisMachine(system.environment().portNames);
    console.print(ports.json(), ports.text());
    return ExitStatus::Done;
}

/// Gives the port that name, or takes its name away when the device is empty.
ExitStatus namePort(const NameOptions& options, Console& console)
{
    SystemEnvironment system;
    const Environment environment = system.environment();
    const int number = comNumber(QString::fromStdString(options.port)).value_or(0);
    const bool isSaved = options.device.empty()
                             ? OwnPortNames::unset(environment.registry, number)
                             : OwnPortNames::set(environment.registry, number,
                                                 QString::fromStdString(options.device));
    if (!isSaved) {
        console.tell(u"No se ha podido guardar la configuración."_s);
        return ExitStatus::Usage;
    }
    const QString port = u"COM%1"_s.arg(number);
    const QString device = environment.portNames.device(number);
    console.print({{u"port"_s, port}, {u"device"_s, device}},
                  device.isEmpty() ? u"%1 no tiene ahora ningún dispositivo."_s.arg(port)
                                   : u"%1 es ahora %2."_s.arg(port, device));
    return ExitStatus::Done;
}

CLI::App& addNaming(CommandLine& commandLine, CLI::App& group, const char* verbName,
                    const char* description, const std::shared_ptr<NameOptions>& options)
{
    CLI::App& verb = commandLine.addVerb(group, verbName, description);
    verb.add_option("PORT", options->port, "Número: COM1 a COM16")
        ->type_name("")
        ->required()
        ->check(validators::comPort());
    commandLine.runsAlone(verb,
                          [options](Console& console) { return namePort(*options, console); });
    return verb;
}

} // namespace

void addPortsCommand(CommandLine& commandLine)
{
    CLI::App& group = commandLine.addVerb("ports", "Muestra los puertos serie, y les da nombres");
    commandLine.runsAlone(group, listPorts);
    const auto options = std::make_shared<NameOptions>();
    addNaming(commandLine, group, "set", "Hace que un número sea un puerto de la red", options)
        .add_option("DEVICE", options->device,
                    "rfc2217://HOST:PORT, o tcp://HOST:PORT para los bytes sin más")
        ->type_name("")
        ->required()
        ->check(validators::device());
    addNaming(commandLine, group, "unset", "Lo deshace", options);
}
