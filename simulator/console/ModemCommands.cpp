#include "CommandArguments.h"
#include "Commands.h"

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

CommandResult setSim(Simulator& simulator, const QString& text)
{
    static const QMap<QString, SimCard::State> states{{u"ready"_s, SimCard::State::Ready},
                                                      {u"pin"_s, SimCard::State::WantsPin},
                                                      {u"puk"_s, SimCard::State::WantsPuk},
                                                      {u"locked"_s, SimCard::State::Locked}};
    if (!states.contains(text))
        return CommandResult::failed(u"ready, pin, puk or locked is wanted"_s);
    simulator.modem().simCard().setState(states.value(text));
    return {};
}

CommandResult setDial(Simulator& simulator, const QString& text)
{
    using Dial = ModemLine::Dial;
    static const QMap<QString, Dial> dials{
        {u"connect"_s, Dial::Connect},        {u"busy"_s, Dial::Busy},
        {u"no-carrier"_s, Dial::NoCarrier},   {u"no-answer"_s, Dial::NoAnswer},
        {u"no-dialtone"_s, Dial::NoDialtone}, {u"error"_s, Dial::Error},
        {u"silence"_s, Dial::Silence},        {u"chatter"_s, Dial::Chatter}};
    const auto [name, rate] = firstWord(text);
    if (!dials.contains(name))
        return CommandResult::failed(u"one of %1 is wanted"_s.arg(
            QStringList(dials.keyBegin(), dials.keyEnd()).join(u", "_s)));
    return withNumber(
        rate.isEmpty() ? u"0"_s : rate, 0, 10'000'000,
        [&, dial = dials.value(name)](int number) { simulator.modem().setDial(dial, number); });
}

/// The argument is COMMAND, or COMMAND and a text in which \r and \n are line ends.
CommandResult setReply(Simulator& simulator, const QString& text)
{
    auto [command, reply] = firstWord(text);
    if (command.isEmpty())
        return CommandResult::failed(u"a modem command is wanted"_s);
    reply.replace(u"\\r"_s, u"\r"_s).replace(u"\\n"_s, u"\n"_s);
    simulator.modem().setReply(command, reply.toLatin1());
    return {};
}

CommandResult describe(Simulator& simulator, const QString&)
{
    static const QMap<ModemLine::State, QString> states{{ModemLine::State::Command, u"command"_s},
                                                        {ModemLine::State::Dialling, u"dialling"_s},
                                                        {ModemLine::State::Call, u"call"_s}};
    ModemLine& modem = simulator.modem();
    const QString card = modem.simCard().stateText();
    return {{u"modem=%1"_s.arg(simulator.hasModem() ? states.value(modem.state()) : u"none"_s),
             u"dialled=%1"_s.arg(modem.dialledNumber()),
             u"sim=%1"_s.arg(card.isEmpty() ? u"LOCKED"_s : card)},
            {}};
}

constexpr Command modemCommandTable[] = {
    {"state", ": what the modem is doing", &describe},
    {"on", ": a modem stands before the clock",
     [](Simulator& simulator, const QString&) {
         simulator.setModem(true);
         return CommandResult();
     }},
    {"off", ": the clock is on the line itself",
     [](Simulator& simulator, const QString&) {
         simulator.setModem(false);
         return CommandResult();
     }},
    {"echo", "on|off: whether it echoes commands",
     [](Simulator& simulator, const QString& text) {
         return withSwitch(text, [&](bool on) { simulator.modem().setEcho(on); });
     }},
    {"sim", "ready|pin|puk|locked: what the SIM card wants", &setSim},
    {"pin", "DIGITS: the card's PIN",
     [](Simulator& simulator, const QString& text) {
         simulator.modem().simCard().setPin(text);
         return CommandResult();
     }},
    {"puk", "DIGITS: the card's PUK",
     [](Simulator& simulator, const QString& text) {
         simulator.modem().simCard().setPuk(text);
         return CommandResult();
     }},
    {"signal", "N: what AT+CSQ tells, 99 for none",
     [](Simulator& simulator, const QString& text) {
         return withNumber(text, 0, 255, [&](int n) { simulator.modem().setSignal(n); });
     }},
    {"dial",
     "connect [RATE]|busy|no-carrier|no-answer|no-dialtone|error|silence|chatter: how a call ends",
     &setDial},
    {"dial-delay", "MS: until the result of a call",
     [](Simulator& simulator, const QString& text) {
         return withNumber(text, 0, 120'000, [&](int ms) { simulator.modem().setDialDelay(ms); });
     }},
    {"split", "MS: replies byte by byte, 0 for whole",
     [](Simulator& simulator, const QString& text) {
         return withNumber(text, 0, 1000, [&](int ms) { simulator.setModemSplit(ms); });
     }},
    {"silent", "on|off: no replies at all",
     [](Simulator& simulator, const QString& text) {
         return withSwitch(text, [&](bool on) { simulator.modem().setSilent(on); });
     }},
    {"chatter", "on|off: endless text",
     [](Simulator& simulator, const QString& text) {
         return withSwitch(text, [&](bool on) { simulator.modem().setChatter(on); });
     }},
    {"reply", "COMMAND [TEXT]: that reply to that command, \\r and \\n as written", &setReply},
    {"hangup", ": the far station hangs up",
     [](Simulator& simulator, const QString&) {
         simulator.modem().hangUp();
         return CommandResult();
     }},
};

} // namespace

std::span<const Command> modemCommands() { return modemCommandTable; }

} // namespace simulator
