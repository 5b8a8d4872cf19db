#include "CommandLine.h"
#include "Commands.h"
#include "StatusJob.h"

void addStatusCommand(CommandLine& commandLine)
{
    CLI::App& verb =
        commandLine.addVerb("status", "Muestra fecha, hora, salidas, entradas e indicadores");
    const auto watch = std::make_shared<bool>(false);
    verb.add_flag("--watch", *watch, "Sigue mostrando cada cambio, hasta que se interrumpa");
    commandLine.runsWithClock(
        verb, [watch](Session& session, Console& console, const CommonOptions&) {
            return std::make_unique<StatusJob>(
                session, console, *watch ? StatusJob::Watch::EachChange : StatusJob::Watch::Once);
        });
}
