#include "CommandArguments.h"
#include "Commands.h"

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

constexpr int maximumRate = 10'000'000;

CommandResult fault(Simulator& simulator, const QString& text)
{
    QString reason;
    const std::optional<Fault> parsed = parsedFault(text, reason);
    if (!parsed)
        return CommandResult::failed(reason);
    simulator.misbehaviour().add(*parsed);
    return {};
}

CommandResult faults(Simulator& simulator, const QString& text)
{
    if (text == "clear"_L1)
        simulator.misbehaviour().clear();
    else if (!text.isEmpty())
        return CommandResult::failed(u"nothing or clear is wanted"_s);
    return {simulator.misbehaviour().list(), {}};
}

CommandResult pace(Simulator& simulator, const QString& text)
{
    const auto [rate, burst] = firstWord(text);
    const std::optional<int> bytes = numberIn(burst.isEmpty() ? u"1"_s : burst, 1, 4096);
    const std::optional<int> number = numberIn(rate == "off"_L1 ? u"0"_s : rate, 0, maximumRate);
    if (!number || !bytes)
        return CommandResult::failed(u"off, or a bit rate and perhaps a burst is wanted"_s);
    simulator.pacer().setRate(*number);
    simulator.pacer().setBurst(*bytes);
    return {};
}

CommandResult afterReset(Simulator& simulator, const QString& text)
{
    static const QMap<QString, AfterReset::Act> acts{{u"stay"_s, AfterReset::Act::Stay},
                                                     {u"silent"_s, AfterReset::Act::Silent},
                                                     {u"vanish"_s, AfterReset::Act::Vanish}};
    const auto [act, time] = firstWord(text);
    if (!acts.contains(act))
        return CommandResult::failed(u"stay, silent or vanish is wanted"_s);
    return withNumber(time.isEmpty() ? u"0"_s : time, 0, anHour, [&, chosen = acts[act]](int ms) {
        simulator.setAfterReset({chosen, ms});
    });
}

CommandResult seed(Simulator& simulator, const QString& text)
{
    bool good = false;
    const quint32 number = text.toUInt(&good);
    if (!good)
        return CommandResult::failed(u"a number from 0 to 4294967295 is wanted"_s);
    simulator.misbehaviour().setSeed(number);
    return {};
}

constexpr Command lineCommandTable[] = {
    {"fault", "FAULT: lets something go wrong, see below", &fault},
    {"faults", "[clear]: lists the faults in force, or ends them", &faults},
    {"seed", "NUMBER: begins the sequence that decides about faults per mille", &seed},
    {"pace", "off|RATE [BURST]: bytes pass at that bit rate, BURST of them together", &pace},
    {"babble", "on|off: endless bytes that are no frame",
     [](Simulator& simulator, const QString& text) {
         return withSwitch(text, [&](bool on) { simulator.setBabble(on); });
     }},
    {"vanish", "[MS]: the line vanishes; back after MS, with 0 not by itself",
     [](Simulator& simulator, const QString& text) {
         return withNumber(text.isEmpty() ? u"0"_s : text, 0, anHour,
                           [&](int milliseconds) { simulator.vanish(milliseconds); });
     }},
    {"return", ": the line is there again",
     [](Simulator& simulator, const QString&) {
         return CommandResult::failed(simulator.comeBack());
     }},
    {"after-reset", "stay|silent [MS]|vanish [MS]: what a firmware reset ends in", &afterReset},
    {"trace", "on|off: prints each frame",
     [](Simulator& simulator, const QString& text) {
         return withSwitch(text, [&](bool on) { simulator.setTrace(on); });
     }},
};

} // namespace

std::span<const Command> lineCommands() { return lineCommandTable; }

} // namespace simulator
