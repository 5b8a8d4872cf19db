#include "Options.h"

#include "Commands.h"
#include "Numbers.h"

#include <QCommandLineParser>

#include <array>

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

/// An option that runs a command, in which %1 is the option's value.
struct CommandOption {
    const char* name;
    const char* value; ///< null where there is none
    const char* command;
    const char* description;
};

constexpr std::array commandOptions{
    CommandOption{"start", "moment", "time %1", "Date and time to start with."},
    CommandOption{"frozen", nullptr, "clock frozen", "The clock stands still."},
    CommandOption{"programme", "what", "programme %1", "school (the default), empty or a file."},
    CommandOption{"demo", nullptr, "demo on", "Outputs and inputs move every few seconds."},
    CommandOption{"inputs", "byte", "inputs %1", "Byte 218 of the status block."},
    CommandOption{"flags", "byte", "flags %1", "Byte 219 of the status block."},
    CommandOption{"type", "number", "type %1", "Device type; 11 is this family."},
    CommandOption{"pace", "rate", "pace %1",
                  "Bytes pass at that bit rate: RATE or \"RATE BURST\"."},
    CommandOption{"fault", "fault", "fault %1", "Lets something go wrong, see below; repeatable."},
    CommandOption{"seed", "number", "seed %1",
                  "Decides which requests a fault per mille affects (1)."},
    CommandOption{"babble", nullptr, "babble on", "Endless bytes that are no frame."},
    CommandOption{"after-reset", "act", "after-reset %1", "stay, silent [MS] or vanish [MS]."},
    CommandOption{"trace", nullptr, "trace on", "Prints each frame."},
    CommandOption{"modem", nullptr, "modem on", "A modem stands before the clock."},
    CommandOption{"sim", "state", "modem sim %1", "ready, pin, puk or locked."},
    CommandOption{"pin", "digits", "modem pin %1", "The SIM card's PIN (1234)."},
    CommandOption{"puk", "digits", "modem puk %1", "The SIM card's PUK (12345678)."},
    CommandOption{"signal", "number", "modem signal %1", "What AT+CSQ tells (20)."},
    CommandOption{"echo", "on|off", "modem echo %1", "The modem's echo (on)."},
    CommandOption{"dial", "result", "modem dial %1", "How a call ends (connect 9600)."},
    CommandOption{"dial-delay", "ms", "modem dial-delay %1", "Until a call's result (500)."},
    CommandOption{"modem-split", "ms", "modem split %1", "Modem replies byte by byte."},
    CommandOption{"modem-silent", nullptr, "modem silent on", "No modem replies at all."},
    CommandOption{"modem-chatter", nullptr, "modem chatter on", "Endless text from the modem."},
    CommandOption{"command", "text", "%1", "Any command, see below; repeatable."},
};

/// Their values are numbers of firmware lines, counted from 1.
constexpr std::array firmwareOptions{
    CommandOption{"firmware-refuse", "n", "fault refuse after %1 on firmware",
                  "Refuses the n-th firmware line; repeatable."},
    CommandOption{"firmware-lose", "n", "fault lost after %1 on firmware",
                  "Loses the n-th firmware line; repeatable."},
};

void addOption(QCommandLineParser& parser, const CommandOption& option)
{
    QCommandLineOption added(QString::fromLatin1(option.name),
                             QString::fromLatin1(option.description));
    if (option.value)
        added.setValueName(QString::fromLatin1(option.value));
    parser.addOption(added);
}

void addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        u"A simulated HCT clock behind a pseudo-terminal or on a serial device.\n\n"
        "The first line on standard output is the device to open. Then commands are read from\n"
        "standard input, one a line; each is answered by lines of its own and then by \"ok\" or\n"
        "\"error: REASON\". Lines that begin with \"event \" or \"trace \" come by themselves."_s);
    parser.addOptions({
        {{u"h"_s, u"help"_s}, u"Shows this."_s},
        {u"model"_s, u"7200 (the default) or 7300."_s, u"model"_s, u"7200"_s},
        {u"link"_s, u"Symbolic link that leads to the pseudo-terminal."_s, u"path"_s},
        {u"port"_s, u"A serial device in place of a pseudo-terminal."_s, u"device"_s},
        {u"speed"_s, u"Bit rate of that device (9600)."_s, u"rate"_s, u"9600"_s},
        {u"station"_s, u"Station address, 0 to 255 (1)."_s, u"number"_s, u"1"_s},
        {u"identification"_s, u"Identification number, 0 to 255 (1)."_s, u"number"_s, u"1"_s},
        {u"stay"_s, u"Goes on when standard input ends; else that ends it."_s},
        {u"exit-with-parent"_s, u"Ends when the process that started it ends."_s},
        {u"save"_s, u"Writes the programme to an .hct file at the end."_s, u"file"_s},
        {u"firmware-save"_s, u"Writes the image to an Intel HEX file at the end."_s, u"file"_s},
    });
    for (const CommandOption& option : commandOptions)
        addOption(parser, option);
    for (const CommandOption& option : firmwareOptions)
        addOption(parser, option);
}

/// The value as a number. If it is none, `reason` names the option.
int number(const QCommandLineParser& parser, const QString& name, int maximum, QString& reason)
{
    const std::optional<int> value = numberIn(parser.value(name), 0, maximum);
    if (!value)
        reason = u"--%1: a number from 0 to %2 is wanted"_s.arg(name).arg(maximum);
    return value.value_or(0);
}

QStringList commandsOf(const QCommandLineParser& parser, QString& reason)
{
    QStringList commands{u"programme school"_s};
    for (const CommandOption& option : commandOptions) {
        const QString name = QString::fromLatin1(option.name);
        const QString command = QString::fromLatin1(option.command);
        if (!option.value && parser.isSet(name))
            commands += command;
        for (const QString& value : option.value ? parser.values(name) : QStringList())
            commands += command.arg(value);
    }
    for (const CommandOption& option : firmwareOptions) {
        for (const QString& value : parser.values(QString::fromLatin1(option.name))) {
            const std::optional<int> line = numberIn(value, 1, 1'000'000);
            if (!line)
                reason = u"--%1: a line's number is wanted"_s.arg(QLatin1String(option.name));
            commands += QString::fromLatin1(option.command).arg(line.value_or(1) - 1);
        }
    }
    return commands;
}

} // namespace

std::optional<Options> parsedOptions(const QStringList& arguments, QString& reason)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(QStringList(u"hct-simulator"_s) + arguments)) {
        reason = parser.errorText();
        return std::nullopt;
    }
    Options options;
    if (!parser.positionalArguments().isEmpty())
        reason = u"no argument stands alone: %1"_s.arg(parser.positionalArguments().constFirst());
    const QString model = parser.value(u"model"_s);
    if (model != "7200"_L1 && model != "7300"_L1)
        reason = u"--model: 7200 or 7300 is wanted"_s;
    options.model = model == "7300"_L1 ? Model::Hct7300 : Model::Hct7200;
    options.identity.station = quint8(number(parser, u"station"_s, 255, reason));
    options.identity.identification = quint8(number(parser, u"identification"_s, 255, reason));
    options.link = parser.value(u"link"_s);
    options.device = parser.value(u"port"_s);
    options.speed = number(parser, u"speed"_s, 10'000'000, reason);
    options.stays = parser.isSet(u"stay"_s);
    options.endsWithParent = parser.isSet(u"exit-with-parent"_s);
    options.saveTo = parser.value(u"save"_s);
    options.firmwareTo = parser.value(u"firmware-save"_s);
    options.wantsHelp = parser.isSet(u"help"_s);
    options.commands = commandsOf(parser, reason);
    if (!options.link.isEmpty() && !options.device.isEmpty())
        reason = u"--link goes with a pseudo-terminal, --port with a device"_s;
    if (!reason.isEmpty())
        return std::nullopt;
    return options;
}

QString usage()
{
    QCommandLineParser parser;
    addOptions(parser);
    return parser.helpText() + u"\nCommands:\n  "_s + commandHelp().join(u"\n  "_s) + u'\n';
}

} // namespace simulator
