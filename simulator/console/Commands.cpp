#include "Commands.h"

#include "CommandArguments.h"

#include <array>

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

struct Group {
    const char* prefix;
    std::span<const Command> commands;
};

std::array<Group, 4> groups()
{
    return {Group{"", clockCommands()}, Group{"", programmeCommands()}, Group{"", lineCommands()},
            Group{"modem ", modemCommands()}};
}

const Command* commandNamed(std::span<const Command> commands, const QString& name)
{
    for (const Command& command : commands) {
        if (name == QLatin1String(command.name))
            return &command;
    }
    return nullptr;
}

} // namespace

CommandResult runCommand(Simulator& simulator, const QString& line)
{
    auto [name, argument] = firstWord(line);
    const bool isForModem = name == "modem"_L1;
    if (isForModem)
        std::tie(name, argument) = firstWord(argument);
    if (name == "help"_L1)
        return {commandHelp(), {}};
    for (const Group& group : groups()) {
        if (isForModem != (*group.prefix != '\0'))
            continue;
        if (const Command* command = commandNamed(group.commands, name))
            return command->run(simulator, argument);
    }
    return CommandResult::failed(u"there is no such command, see help: %1"_s.arg(line));
}

QStringList commandHelp()
{
    QStringList lines;
    for (const Group& group : groups()) {
        for (const Command& command : group.commands)
            lines += QString::fromLatin1(group.prefix) + QLatin1String(command.name) +
                     QLatin1String(*command.usage == ':' ? "" : " ") + QLatin1String(command.usage);
    }
    lines += {u"help: this list"_s, u"quit: ends the simulator"_s};
    return lines + faultHelp();
}

} // namespace simulator
