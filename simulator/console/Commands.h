#pragma once

#include "CommandResult.h"
#include "Simulator.h"

#include <span>

namespace simulator {

/// A command that the simulator takes, one a line: its name, then its argument.
struct Command {
    const char* name;
    const char* usage;
    CommandResult (*run)(Simulator& simulator, const QString& argument);
};

/// Runs a line such as "mode manual"; a name that no command has is an error.
CommandResult runCommand(Simulator& simulator, const QString& line);
/// Every command with its arguments, then the faults.
QStringList commandHelp();

/// The commands by what they are about; those of the modem stand behind the word "modem".
std::span<const Command> clockCommands();
std::span<const Command> programmeCommands();
std::span<const Command> lineCommands();
std::span<const Command> modemCommands();

} // namespace simulator
