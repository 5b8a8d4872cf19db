#include "TelnetOptions.h"

#include "Telnet.h"

namespace {

QByteArray command(quint8 verb, quint8 option)
{
    QByteArray bytes(1, static_cast<char>(telnet::IAC));
    bytes.append(static_cast<char>(verb));
    bytes.append(static_cast<char>(option));
    return bytes;
}

} // namespace

TelnetOptions::TelnetOptions()
{
    for (const quint8 option : {telnet::Binary, telnet::SuppressGoAhead}) {
        m_ours[option] = State::Requested;
        m_theirs[option] = State::Requested;
    }
    m_ours[telnet::ComPort] = State::Requested;
}

QByteArray TelnetOptions::requests()
{
    return command(telnet::WILL, telnet::Binary) + command(telnet::DO, telnet::Binary) +
           command(telnet::WILL, telnet::SuppressGoAhead) +
           command(telnet::DO, telnet::SuppressGoAhead) + command(telnet::WILL, telnet::ComPort);
}

QByteArray TelnetOptions::answer(quint8 verb, quint8 option)
{
    const bool isOurs = verb == telnet::DO || verb == telnet::DONT;
    const bool isWanted = verb == telnet::DO || verb == telnet::WILL;
    State& state = (isOurs ? m_ours : m_theirs)[option];
    // A request that crosses our own is the answer to it.
    if (state == State::Requested) {
        state = isWanted ? State::On : State::Refused;
        return {};
    }
    if (state == State::Refused || isWanted == (state == State::On))
        return {};
    state = State::Refused;
    return command(isOurs ? telnet::WONT : telnet::DONT, option);
}

bool TelnetOptions::areAgreed() const
{
    return m_ours[telnet::Binary] == State::On && m_theirs[telnet::Binary] == State::On &&
           m_ours[telnet::ComPort] == State::On;
}

bool TelnetOptions::isBinaryRefused() const
{
    return m_ours[telnet::Binary] == State::Refused || m_theirs[telnet::Binary] == State::Refused;
}

bool TelnetOptions::isComPortRefused() const { return m_ours[telnet::ComPort] == State::Refused; }
