#pragma once

#include "Order.h"

#include <CLI/CLI.hpp>

#include <map>
#include <memory>
#include <variant>

/// The command line of hctctl: its common options, its commands, and what they do. Commands are
/// added by functions, one for each group; see commands/Commands.h.
class CommandLine {
public:
    CommandLine();

    /// A command of the program, or of a group that this has returned, such as "clock set".
    CLI::App& addVerb(const char* name, const char* description)
    {
        return addVerb(m_app, name, description);
    }
    CLI::App& addVerb(CLI::App& group, const char* name, const char* description);
    /// A group of commands. It does nothing itself.
    CLI::App& addGroup(const char* name, const char* description);

    /// An argument of a command that names a file, and cannot be omitted. `path` lives as long as
    /// what the command does.
    void addFile(CLI::App& verb, const char* name, std::string& path, const char* description);

    /// What a command does when it is given: without a clock, or with one. What the action uses of
    /// the command's options it must own.
    void runsAlone(const CLI::App& verb, AloneAction action)
    {
        m_actions[&verb] = std::move(action);
    }
    void runsWithClock(const CLI::App& verb, ClockRun::MakeJob makeJob,
                       AloneAction precondition = {})
    {
        m_actions[&verb] = ClockAction{std::move(makeJob), std::move(precondition)};
    }

    /// The order that the arguments give (without the program's name), or the exit status when
    /// there is nothing to do: help or version, which are printed, or a mistake, which is told.
    std::variant<Order, ExitStatus> read(const QStringList& arguments);

private:
    void addOptions();
    ExitStatus tellMistake(const CLI::ParseError& error) const;
    /// What to type for the help that tells of this word: an option that all commands have, or
    /// anything else of the command.
    QString helpFor(const QString& word) const;
    /// The command that was given.
    const CLI::App* chosenVerb() const;

    CLI::App m_app;
    CommonOptions m_options;
    /// What the parser writes to: it knows no texts of the toolkit.
    struct Texts {
        std::string port;
        std::string line;
        std::string modem;
        std::string trace;
    } m_texts;
    std::map<const CLI::App*, decltype(Order::action)> m_actions;
    std::map<const CLI::App*, std::vector<const std::string*>> m_files;
};
