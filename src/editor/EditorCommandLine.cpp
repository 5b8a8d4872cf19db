#include "EditorCommandLine.h"

#include "SpanishHelp.h"

#include <algorithm>
#include <sstream>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// What the parser writes to: it knows no texts of the toolkit.
struct Texts {
    std::vector<std::string> files;
    std::string pdf;
    std::string model;
    std::string title;
};

void addOptions(CLI::App& app, Texts& texts)
{
    // On Windows it would take a path that begins with a slash for an option.
    app.allow_windows_style_options(false);
    app.formatter(std::make_shared<SpanishHelp>());
    app.option_defaults()->group(SpanishHelp::optionGroup);
    app.set_help_flag("-h,--help", "Muestra esta ayuda")->group(SpanishHelp::optionGroup);
    app.set_version_flag("--version", "hct-editor " HCT_VERSION, "Muestra la versión")
        ->group(SpanishHelp::optionGroup);
    app.add_option("FILE", texts.files, "Archivos de programa (.hct) que se abren")->type_name("");
    app.add_option("--pdf", texts.pdf,
                   "Escribe en OUT la hoja para la pared de un archivo, sin abrir ventanas")
        ->type_name("OUT");
    app.add_option("--model", texts.model,
                   "Modelo del reloj, 7200 o 7300; si no, el de la última vez o el que se deduce "
                   "del archivo")
        ->type_name("MODEL")
        ->check(CLI::Validator(
            [](const std::string& model) {
                return model == "7200" || model == "7300"
                           ? std::string()
                           : "\"" + model + "\" no es un modelo: indique 7200 o 7300";
            },
            ""));
    app.add_option("--title", texts.title, "Título de la hoja; si no, el de la última vez")
        ->type_name("TEXT");
    app.footer("Acaba con 0 si todo ha ido bien, 2 si la orden o un archivo no sirven.");
}

EditorAnswer mistake(const QString& sentence)
{
    return {
        EditorCommandLine::failure, {}, sentence + u"\nLa ayuda se ve con: hct-editor --help\n"_s};
}

EditorAnswer mistake(const CLI::App& app, const CLI::ParseError& error)
{
    QStringList unknown;
    for (const std::string& word : app.remaining(true))
        unknown += QString::fromStdString(word);
    return mistake(SpanishHelp::failure(error, unknown));
}

} // namespace

bool EditorCommandLine::needsNoDisplay(const QStringList& arguments)
{
    return std::any_of(arguments.begin() + 1, arguments.end(), [](const QString& argument) {
        return argument == u"-h" || argument == u"--help" || argument == u"--version" ||
               argument == u"--pdf" || argument.startsWith(u"--pdf=");
    });
}

std::variant<EditorOrder, EditorAnswer> EditorCommandLine::read(const QStringList& arguments)
{
    CLI::App app("Edita programas de los relojes HCT-7200 y HCT-7300, sin reloj.", "hct-editor");
    Texts texts;
    addOptions(app, texts);
    // The parser takes them from the end.
    std::vector<std::string> reversed;
    for (auto argument = arguments.crbegin(); argument != arguments.crend(); ++argument)
        reversed.push_back(argument->toStdString());
    try {
        app.parse(reversed);
    } catch (const CLI::Success& success) {
        std::ostringstream text;
        const int status = app.exit(success, text, text);
        return EditorAnswer{status, QString::fromStdString(text.str()), {}};
    } catch (const CLI::ParseError& error) {
        return mistake(app, error);
    }
    EditorOrder order;
    for (const std::string& file : texts.files)
        order.files.append(QString::fromStdString(file));
    if (app.count("--pdf") > 0)
        order.pdf = QString::fromStdString(texts.pdf);
    if (app.count("--title") > 0)
        order.title = QString::fromStdString(texts.title);
    if (app.count("--model") > 0)
        order.model = texts.model == "7200" ? ClockModel::Hct7200 : ClockModel::Hct7300;
    if (order.title && !order.pdf)
        return mistake(u"--title solo vale con --pdf."_s);
    if (order.pdf && order.files.size() != 1)
        return mistake(u"--pdf lleva un solo archivo."_s);
    return order;
}
