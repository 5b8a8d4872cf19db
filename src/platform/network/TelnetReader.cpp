#include "TelnetReader.h"

#include "Telnet.h"

#include <utility>

std::optional<TelnetReader::Command> TelnetReader::read(QByteArrayView& bytes, QByteArray& data)
{
    while (!bytes.isEmpty()) {
        if (m_state == State::Data) {
            qsizetype count = bytes.indexOf(static_cast<char>(telnet::IAC));
            if (count < 0)
                count = bytes.size();
            data.append(bytes.first(count));
            bytes = bytes.sliced(count);
            if (bytes.isEmpty())
                break;
            m_state = State::Command;
            bytes = bytes.sliced(1);
            continue;
        }
        const auto byte = static_cast<quint8>(bytes.front());
        bytes = bytes.sliced(1);
        if (m_state == State::Command && byte == telnet::IAC) {
            data.append(static_cast<char>(byte));
            m_state = State::Data;
        } else if (take(byte)) {
            m_state = State::Data;
            return std::exchange(m_command, {});
        }
    }
    return std::nullopt;
}

/// Whether the command is complete.
bool TelnetReader::take(quint8 byte)
{
    switch (m_state) {
    case State::Data: break;
    case State::Command: return takeCommandByte(byte);
    case State::Option: m_command.option = byte; return true;
    case State::Subnegotiation:
        m_command.option = byte;
        m_state = byte == telnet::IAC ? State::CommandInValue : State::Value;
        return false;
    case State::Value:
    case State::CommandInValue: return takeValueByte(byte);
    }
    return false;
}

bool TelnetReader::takeCommandByte(quint8 byte)
{
    m_command = {byte, 0, {}};
    // Only IAC is larger, and it never comes here.
    if (byte >= telnet::WILL)
        m_state = State::Option;
    else
        m_state = byte == telnet::SB ? State::Subnegotiation : State::Data;
    return false;
}

bool TelnetReader::takeValueByte(quint8 byte)
{
    const bool isAfterCommand = m_state == State::CommandInValue;
    if (!isAfterCommand && byte == telnet::IAC) {
        m_state = State::CommandInValue;
        return false;
    }
    if (isAfterCommand && byte == telnet::SE)
        return true;
    // Another command: the end of the subnegotiation is missing.
    if (isAfterCommand && byte != telnet::IAC)
        return takeCommandByte(byte);
    m_state = State::Value;
    if (m_command.value.size() < longestValue)
        m_command.value.append(static_cast<char>(byte));
    return false;
}
