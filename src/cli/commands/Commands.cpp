#include "Commands.h"

void addCommands(CommandLine& commandLine)
{
    addStatusCommand(commandLine);
    addClockCommands(commandLine);
    addOutputsCommand(commandLine);
    addProgrammeCommands(commandLine);
    addFirmwareCommands(commandLine);
    addPortsCommand(commandLine);
}
