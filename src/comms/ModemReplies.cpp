#include "ModemReplies.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace modemreplies {
namespace {

Verdict awaited() { return {}; }

Verdict succeeded(const QString& line = {}) { return {Outcome::Succeeded, line}; }

Verdict judgePinQuery(const QByteArray& received)
{
    if (received.contains("+CPIN: READY"))
        return succeeded(u"No se necesita código PIN"_s);
    if (received.contains("+CPIN: SIM PIN"))
        return succeeded(u"Debe introducir el PIN"_s);
    if (received.contains("+CPIN: SIM PUK"))
        return succeeded(u"Debe introducir el código PUK y un nuevo PIN"_s);
    return awaited();
}

/// The number that a text begins with, blanks skipped; nothing when there is none.
std::optional<int> leadingNumber(const QByteArray& text)
{
    const QByteArray trimmed = text.trimmed();
    const auto end =
        std::find_if(trimmed.begin(), trimmed.end(), [](char c) { return c < '0' || c > '9'; });
    bool valid = false;
    const int number = trimmed.left(end - trimmed.begin()).toInt(&valid);
    return valid ? std::optional(number) : std::nullopt;
}

/// "*+CSQ:*,*" CR LF "OK" CR LF, with any text at the stars.
bool isSignalReply(const QByteArray& received)
{
    const QByteArray tail = "\r\nOK\r\n";
    const qsizetype name = received.indexOf("+CSQ:");
    const qsizetype comma = name < 0 ? -1 : received.indexOf(',', name);
    return comma >= 0 && received.endsWith(tail);
}

Verdict judgeSignal(const QByteArray& received)
{
    if (!isSignalReply(received))
        return awaited();
    // After the first colon of all, even of one before "+CSQ:".
    const auto value = leadingNumber(received.mid(received.indexOf(':') + 1));
    if (value == 99)
        return succeeded(u"El módem no tiene cobertura"_s);
    if (value && *value < 32)
        return succeeded(u"Nivel de señal %1dBm [-113...-51]"_s.arg(2 * *value - 113));
    return succeeded();
}

Verdict judgeDialling(const QByteArray& received)
{
    if (received.contains("BUSY"))
        return {Outcome::Busy, {}};
    if (received.contains("CONNECT"))
        return succeeded(u"Conexión establecida"_s);
    return awaited();
}

Verdict judgeWord(const QByteArray& received, const QByteArray& word, const QString& line = {})
{
    return received.contains(word) ? succeeded(line) : awaited();
}

} // namespace

Verdict judge(LinkState phase, const QByteArray& received, const QByteArray& expected)
{
    const bool isCommandPhase = phase != LinkState::Idle && phase <= LinkState::Dialling;
    if (isCommandPhase && received.contains("ERROR"))
        return {Outcome::Failed, {}};
    switch (phase) {
    case LinkState::ScriptCommand: return judgeWord(received, expected.isEmpty() ? "OK" : expected);
    case LinkState::Initialisation: return judgeWord(received, "OK");
    case LinkState::PinSent:
        return judgeWord(received, "OK", u"Código PIN/PUK enviado correctamente"_s);
    case LinkState::PinQuery: return judgePinQuery(received);
    case LinkState::SignalQuery: return judgeSignal(received);
    case LinkState::Dialling: return judgeDialling(received);
    case LinkState::Idle:
    case LinkState::HeaderHunt:
    case LinkState::Body: break;
    }
    return awaited();
}

} // namespace modemreplies
