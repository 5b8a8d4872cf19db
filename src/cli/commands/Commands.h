#pragma once

class CommandLine;

/// Adds all commands of hctctl. Each group of commands is a function of its own file.
void addCommands(CommandLine& commandLine);

void addStatusCommand(CommandLine& commandLine);
void addClockCommands(CommandLine& commandLine);
void addOutputsCommand(CommandLine& commandLine);
void addProgrammeCommands(CommandLine& commandLine);
void addFirmwareCommands(CommandLine& commandLine);
void addPortsCommand(CommandLine& commandLine);
