#include "CommandLine.h"
#include "Commands.h"
#include "Console.h"
#include "PortList.h"
#include "SystemEnvironment.h"

void addPortsCommand(CommandLine& commandLine)
{
    CLI::App& verb = commandLine.addVerb("ports", "Muestra los puertos serie de este ordenador");
    commandLine.runsAlone(verb, [](Console& console) {
        SystemEnvironment system;
        const PortList ports = PortList::ofThisMachine(system.environment().portNames);
        console.print(ports.json(), ports.text());
        return ExitStatus::Done;
    });
}
