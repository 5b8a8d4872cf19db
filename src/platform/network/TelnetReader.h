#pragma once

#include <QByteArray>

#include <optional>

/// Separates data and commands in what the far end of a telnet connection sends, whatever the
/// chunks. Commands without an option are dropped. Lines are not read as such: the connection is
/// binary.
class TelnetReader {
public:
    struct Command {
        /// WILL, WONT, DO, DONT or SB.
        quint8 verb = 0;
        quint8 option = 0;
        /// What a subnegotiation says, the first longestValue bytes of it.
        QByteArray value;
    };

    /// Reads to the end of the next command and takes what it has read from the front of `bytes`.
    /// Appends the data before the command to `data`. Nothing when the bytes have ended.
    std::optional<Command> read(QByteArrayView& bytes, QByteArray& data);

    /// In bytes. No value that is understood is longer than 5.
    static constexpr qsizetype longestValue = 64;

private:
    enum class State { Data, Command, Option, Subnegotiation, Value, CommandInValue };

    bool takeCommandByte(quint8 byte);
    bool takeValueByte(quint8 byte);
    bool take(quint8 byte);

    State m_state = State::Data;
    Command m_command;
};
