#pragma once

namespace CLI {
class App;
}
class CommandLine;

/// Adds the commands of a group "programme" that need no clock: check, show, diff.
void addProgrammeFileCommands(CommandLine& commandLine, CLI::App& group);
