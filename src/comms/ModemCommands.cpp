#include "ModemCommands.h"

#include "AnsiText.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace modemcommands {
namespace {

constexpr char lineEnd[] = "\r\n";

} // namespace

Command initialise(const QString& words) { return {AnsiText::fromUnicode(words) + lineEnd}; }

Command queryPin() { return {QByteArray("AT+CPIN?") + lineEnd}; }

Command querySignal() { return {QByteArray("AT+CSQ") + lineEnd}; }

Command enterPin(const QByteArray& pin, const QByteArray& puk)
{
    Command command{{}, 5000ms, u"AT+CPIN="_s};
    // Reserved, so that growing leaves no copy behind.
    command.text.reserve(pin.size() + puk.size() + 16);
    command.text.append("AT+CPIN=");
    if (!puk.isEmpty()) {
        command.text.append(puk).append(',');
        command.display += u"********,";
    }
    command.text.append(pin).append(lineEnd);
    command.display += u"****";
    return command;
}

Command dial(const QString& number)
{
    return {"ATD" + AnsiText::fromUnicode(number) + lineEnd, 64000ms};
}

Command scriptLine(const QByteArray& line) { return {line + lineEnd}; }

Command typed(const QByteArray& characters) { return {characters, 0ms}; }

} // namespace modemcommands
