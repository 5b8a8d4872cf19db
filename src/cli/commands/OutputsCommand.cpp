#include "CommandLine.h"
#include "Commands.h"
#include "OutputsJob.h"
#include "Validators.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const char* const automatic = "auto";

CLI::Validator switchValidator()
{
    return validators::makeValidator([](const QString& text) {
        static const QRegularExpression form(u"^(auto|[123]=(on|off))$"_s);
        if (form.match(text).hasMatch())
            return QString();
        return u"\"%1\" no es auto, ni una salida como 1=on o 2=off"_s.arg(text);
    });
}

OutputsJob::Wish wishOf(const std::vector<std::string>& words)
{
    OutputsJob::Wish wish;
    if (words.empty())
        return wish;
    wish.action = OutputsJob::Action::GiveBack;
    if (words.front() == automatic)
        return wish;
    wish.action = OutputsJob::Action::Switch;
    for (const std::string& word : words)
        wish.positions[word.front() - '0'] = word.ends_with("=on");
    return wish;
}

/// An output that is named twice, or together with "auto".
bool areContradictory(const std::vector<std::string>& words)
{
    const OutputsJob::Wish wish = wishOf(words);
    const bool hasAutomatic = std::ranges::find(words, automatic) != words.end();
    return hasAutomatic ? words.size() > 1 : wish.positions.size() != words.size();
}

} // namespace

void addOutputsCommand(CommandLine& commandLine)
{
    CLI::App& verb = commandLine.addVerb("outputs", "Muestra las salidas, o las conmuta a mano");
    const auto words = std::make_shared<std::vector<std::string>>();
    CLI::Option* option =
        verb.add_option("SWITCH", *words, "auto, o salidas como 1=on 2=off; 1 es Avisos 1");
    option->type_name("")->check(switchValidator());
    verb.callback([words] {
        if (areContradictory(*words))
            throw CLI::ValidationError("SWITCH", "las salidas se contradicen");
    });
    commandLine.runsWithClock(
        verb, [words](Session& session, Console& console, const CommonOptions& options) {
            return std::make_unique<OutputsJob>(session, console, options, wishOf(*words));
        });
}
