#pragma once

#include <QString>

#include <optional>

/// A serial port at the far end of a network: "tcp://HOST:PORT", where bytes pass as they are, or
/// "rfc2217://HOST:PORT", telnet with the COM port option. The host is a name, an IPv4 address, or
/// an IPv6 address in square brackets, with its zone after "%" where it needs one.
struct NetworkAddress {
    enum class Protocol { Raw, Rfc2217 };

    Protocol protocol = Protocol::Raw;
    /// Without brackets.
    QString host;
    quint16 port = 0;

    /// Whether the name of a device is meant as an address, right or wrong: it has "://".
    static bool isMeantBy(const QString& device);
    /// The address; nothing when the text is wrong.
    static std::optional<NetworkAddress> of(const QString& text);
    /// What to tell of a text that is meant as an address and is none, in Spanish, without a full
    /// stop.
    static QString mistakeIn(const QString& text);
};
