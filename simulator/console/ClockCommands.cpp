#include "CommandArguments.h"
#include "Commands.h"
#include "StateText.h"

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

CommandResult setTime(Simulator& simulator, const QString& text)
{
    const QDateTime moment = QDateTime::fromString(text, Qt::ISODate);
    if (!moment.isValid())
        return CommandResult::failed(u"a moment such as 2026-11-20T08:59:50 is wanted"_s);
    simulator.clock().setDateTime(moment);
    return {};
}

CommandResult setByte(Simulator& simulator, const QString& text)
{
    if (text == "free"_L1) {
        simulator.clock().releaseBytes();
        return {};
    }
    const auto [index, value] = firstWord(text);
    const std::optional<int> place = numberIn(index, 0, int(SimulatedClock::statusSize) - 1);
    if (!place)
        return CommandResult::failed(u"free, or a place from 0 to 219 and a value is wanted"_s);
    return withNumber(value, 0, 255, [&, at = *place](int number) {
        simulator.clock().holdByte(at, quint8(number));
    });
}

constexpr Command clockCommandTable[] = {
    {"state", ": everything as key=value lines",
     [](Simulator& simulator, const QString&) {
         return CommandResult{stateText(simulator), {}};
     }},
    {"time", "MOMENT: sets the clock, such as 2026-11-20T08:59:50", &setTime},
    {"clock", "frozen|running: a frozen clock stands still",
     [](Simulator& simulator, const QString& text) {
         return withChoice(text, "frozen", "running",
                           [&](bool frozen) { simulator.clock().setFrozen(frozen); });
     }},
    {"mode", "manual|automatic",
     [](Simulator& simulator, const QString& text) {
         return withChoice(text, "manual", "automatic",
                           [&](bool manual) { simulator.clock().setManual(manual); });
     }},
    {"outputs", "BITS: manual operation with those outputs on (bit i for output i)",
     [](Simulator& simulator, const QString& text) {
         return withNumber(text, 0, 7, [&](int bits) {
             simulator.clock().setManual(true);
             simulator.clock().commandOutputs(quint8(~bits));
         });
     }},
    {"inputs", "BYTE: byte 218 of the status block",
     [](Simulator& simulator, const QString& text) {
         return withNumber(text, 0, 255,
                           [&](int bits) { simulator.clock().setInputs(quint8(bits)); });
     }},
    {"flags", "BYTE: byte 219 of the status block, but for bit 2, which tells the mode",
     [](Simulator& simulator, const QString& text) {
         return withNumber(text, 0, 255,
                           [&](int bits) { simulator.clock().setFlags(quint8(bits)); });
     }},
    {"type", "NUMBER: the device type, 11 for this family; others answer with 5 bytes",
     [](Simulator& simulator, const QString& text) {
         return withNumber(text, 0, 255,
                           [&](int type) { simulator.clock().setDeviceType(quint8(type)); });
     }},
    {"byte", "PLACE VALUE|free: holds a byte of the status block, or frees all", &setByte},
    {"demo", "on|off: outputs and inputs move every few seconds",
     [](Simulator& simulator, const QString& text) {
         return withSwitch(text, [&](bool on) { simulator.clock().setDemonstration(on); });
     }},
};

} // namespace

std::span<const Command> clockCommands() { return clockCommandTable; }

} // namespace simulator
