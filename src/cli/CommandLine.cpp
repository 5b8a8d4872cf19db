#include "CommandLine.h"

#include "Console.h"
#include "SpanishHelp.h"
#include "Validators.h"

#include <QStringList>

#include <sstream>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestWait = 3600;

/// The parser would take the next word as the value of "--port=".
void refuseMissingValues(const QStringList& arguments)
{
    for (const QString& argument : arguments) {
        if (argument == u"--")
            return;
        if (argument.startsWith(u"--") && argument.indexOf(u'=') == argument.size() - 1)
            throw CLI::ArgumentMismatch(argument.chopped(1).toStdString() + ": value missing",
                                        CLI::ExitCodes::ArgumentMismatch);
    }
}

} // namespace

CommandLine::CommandLine()
    : m_app("Maneja los relojes programadores de señales HCT-7200 y HCT-7300.", "hctctl")
{
    // On Windows it would take a path that begins with a slash for an option.
    m_app.allow_windows_style_options(false);
    m_app.formatter(std::make_shared<SpanishHelp>(
        "La ayuda de cada orden se ve con ella, como en: hctctl clock set --help\n",
        "Las opciones comunes a todas las órdenes se ven con: hctctl --help\n"));
    m_app.option_defaults()->group(SpanishHelp::optionGroup);
    m_app.set_help_flag("-h,--help", "Muestra esta ayuda")->group(SpanishHelp::optionGroup);
    m_app.set_version_flag("--version", "hctctl " HCT_VERSION, "Muestra la versión")
        ->group(SpanishHelp::optionGroup);
    m_app.require_subcommand(1);
    // So that common options can follow the command.
    m_app.fallthrough();
    m_app.footer(
        "Acaba con 0 si todo ha ido bien, 1 si el reloj se niega o hay diferencias, 2 si la\n"
        "orden o un archivo no sirven, 3 si falla el puerto, 4 si nadie contesta.");
    addOptions();
}

void CommandLine::addOptions()
{
    CLI::Option* port =
        m_app.add_option("--port", m_texts.port, "Puerto: COM3, /dev/ttyUSB0, rfc2217://HOST:PORT")
            ->type_name("PORT");
    port->check(validators::port());
    m_app
        .add_option("--line", m_texts.line,
                    "Velocidad, y si hace falta paridad (N E O M S), bits de datos y de parada")
        ->type_name("SPEED[,PARITY,DATA,STOP]")
        ->check(validators::line());
    m_app.add_option("--station", m_options.station, "Estación del reloj")
        ->type_name("N")
        ->transform(validators::number(0, 255));
    m_app.add_option("--identification", m_options.identification, "Número de identificación")
        ->type_name("N")
        ->transform(validators::number(0, 255));
    m_app
        .add_option("--modem", m_texts.modem,
                    "Llama a este teléfono por el módem de la configuración")
        ->type_name("NUMBER")
        ->check(validators::telephone())
        ->excludes(port);
    m_app
        .add_option("--wait", m_options.wait,
                    "Cuánto se intenta llegar al reloj (10 segundos; 90 por módem)")
        ->type_name("SECONDS")
        ->transform(validators::number(1, longestWait));
    m_app.add_flag("--json", m_options.json, "Da el resultado como un objeto JSON");
    m_app
        .add_option("--trace", m_texts.trace,
                    "Escribe en FILE, para el servicio técnico, lo que pasa por la línea")
        ->type_name("FILE")
        ->check(validators::fileName());
    m_app.add_flag("--quiet", m_options.quiet, "Solo dice el resultado y lo que falla");
}

CLI::App& CommandLine::addVerb(CLI::App& group, const char* name, const char* description)
{
    CLI::App* verb = group.add_subcommand(name, description);
    verb->group(SpanishHelp::verbGroup);
    verb->option_defaults()->group(SpanishHelp::optionGroup);
    verb->get_help_ptr()->group(SpanishHelp::optionGroup);
    return *verb;
}

CLI::App& CommandLine::addGroup(const char* name, const char* description)
{
    CLI::App& group = addVerb(name, description);
    group.require_subcommand(1);
    return group;
}

void CommandLine::addFile(CLI::App& verb, const char* name, std::string& path,
                          const char* description)
{
    verb.add_option(name, path, description)
        ->type_name("")
        ->required()
        ->check(validators::fileName());
    m_files[&verb].push_back(&path);
}

std::variant<Order, ExitStatus> CommandLine::read(const QStringList& arguments)
{
    // The parser takes them from the end.
    std::vector<std::string> reversed;
    for (auto argument = arguments.crbegin(); argument != arguments.crend(); ++argument)
        reversed.push_back(argument->toStdString());
    try {
        refuseMissingValues(arguments);
        m_app.parse(reversed);
    } catch (const CLI::Success& success) {
        std::ostringstream text;
        m_app.exit(success, text, text);
        Console console(Console::Form::Text, Console::Notes::Shown);
        console.print(QString::fromStdString(text.str()).chopped(1));
        return console.finalStatus(ExitStatus::Done);
    } catch (const CLI::ParseError& error) {
        return tellMistake(error);
    }
    m_options.port = QString::fromStdString(m_texts.port);
    m_options.line = QString::fromStdString(m_texts.line);
    m_options.modemNumber = QString::fromStdString(m_texts.modem);
    m_options.trace = QString::fromStdString(m_texts.trace);
    Order order;
    order.options = m_options;
    const CLI::App* verb = chosenVerb();
    for (const std::string* path : m_files[verb])
        order.files += QString::fromStdString(*path);
    order.action = m_actions.at(verb);
    return order;
}

ExitStatus CommandLine::tellMistake(const CLI::ParseError& error) const
{
    QStringList unknown;
    for (const std::string& word : m_app.remaining(true))
        unknown += QString::fromStdString(word);
    Console console(Console::Form::Text, Console::Notes::Shown);
    return console.refuse(SpanishHelp::failure(error, unknown) + u"\nLa ayuda se ve con: "_s +
                          helpFor(SpanishHelp::nameIn(error)));
}

QString CommandLine::helpFor(const QString& word) const
{
    QString words;
    if (!m_app.get_option_no_throw(word.toStdString()))
        for (const CLI::App* verb = chosenVerb(); verb != &m_app; verb = verb->get_parent())
            words.prepend(QString::fromStdString(verb->get_name()) + u' ');
    return u"hctctl %1--help"_s.arg(words);
}

const CLI::App* CommandLine::chosenVerb() const
{
    const CLI::App* verb = &m_app;
    while (!verb->get_subcommands().empty())
        verb = verb->get_subcommands().front();
    return verb;
}
