#pragma once

#include "CommandResult.h"
#include "Simulator.h"

#include <span>

namespace simulator {

/// A command of the simulator. On a line it is the name and then the argument.
struct Command {
    const char* name;
    const char* usage;
    CommandResult (*run)(Simulator& simulator, const QString& argument);
};

/// Runs a line such as "mode manual". An unknown name is an error.
CommandResult runCommand(Simulator& simulator, const QString& line);
/// Every command with its arguments, then the faults.
QStringList commandHelp();

/// The commands by topic. Those of the modem follow the word "modem".
std::span<const Command> clockCommands();
std::span<const Command> programmeCommands();
std::span<const Command> lineCommands();
std::span<const Command> modemCommands();

} // namespace simulator
