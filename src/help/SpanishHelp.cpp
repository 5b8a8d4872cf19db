#include "SpanishHelp.h"

#include <QRegularExpression>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t columnWidth = 34;

} // namespace

SpanishHelp::SpanishHelp(std::string hintOfProgram, std::string hintOfCommands)
    : m_hintOfProgram(std::move(hintOfProgram)), m_hintOfCommands(std::move(hintOfCommands))
{
    column_width(columnWidth);
    label("Usage", "Uso");
    label("OPTIONS", "opciones");
    label("SUBCOMMAND", "orden");
    label("SUBCOMMANDS", "orden");
    label("Positionals", "Argumentos");
    label("REQUIRED", "(obligatorio)");
    label("Excludes", "No con");
}

std::string SpanishHelp::make_help(const CLI::App* app, std::string name,
                                   CLI::AppFormatMode mode) const
{
    std::string page = make_description(app) + make_usage(app, std::move(name)) +
                       make_positionals(app) + make_groups(app, mode) +
                       make_subcommands(app, mode) + '\n';
    return page + (app->get_parent() ? m_hintOfCommands : m_hintOfProgram) + make_footer(app);
}

QString SpanishHelp::nameIn(const CLI::ParseError& error)
{
    static const QRegularExpression words(u"^(Could not convert: )?([^ :]*)"_s);
    return words.match(QString::fromUtf8(error.what())).captured(2);
}

QString SpanishHelp::failure(const CLI::ParseError& error, const QStringList& unknown)
{
    const QString kind = QString::fromStdString(error.get_name());
    const QString message = QString::fromUtf8(error.what());
    const QString name = nameIn(error);
    if (!unknown.isEmpty())
        return u"No se entiende \"%1\"."_s.arg(unknown.join(u' '));
    if (kind == u"ValidationError")
        return message + u'.';
    if (kind == u"ArgumentMismatch")
        return (message.endsWith("missing"_L1) ? u"Falta el valor de %1."_s
                                               : u"%1 lleva un solo valor."_s)
            .arg(name);
    if (kind == u"ConversionError")
        return u"%1 no lleva ningún valor."_s.arg(name);
    if (kind == u"ExcludesError")
        return u"%1 y %2 no pueden ir juntas."_s.arg(name, message.section(u' ', -1));
    if (kind == u"RequiredError" && message.startsWith("A subcommand"_L1))
        return u"Falta la orden."_s;
    if (kind == u"RequiredError")
        return u"Falta %1."_s.arg(name);
    return u"No se entiende la línea de órdenes (%1)."_s.arg(message);
}
