#pragma once

#include <CLI/CLI.hpp>

#include <QString>

/// What a program says about its usage, in Spanish: the help pages, and what is wrong with a
/// command line. Its groups are `optionGroup` and `verbGroup`.
class SpanishHelp final : public CLI::Formatter {
public:
    static constexpr const char* optionGroup = "Opciones";
    static constexpr const char* verbGroup = "Órdenes";

    /// Sentences below the help of the program itself, and below that of its commands.
    explicit SpanishHelp(std::string hintOfProgram = {}, std::string hintOfCommands = {});

    std::string make_help(const CLI::App* app, std::string name,
                          CLI::AppFormatMode mode) const override;

    /// The name in a message such as "--port: 1 required TEXT missing".
    static QString nameIn(const CLI::ParseError& error);
    /// A sentence about a failure of the parser. `unknown` are the words that it did not
    /// understand.
    static QString failure(const CLI::ParseError& error, const QStringList& unknown);

private:
    const std::string m_hintOfProgram;
    const std::string m_hintOfCommands;
};
