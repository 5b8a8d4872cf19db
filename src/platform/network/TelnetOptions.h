#pragma once

#include <QByteArray>

#include <array>

/// Negotiates the options of a telnet connection to a serial port: binary in both directions,
/// go-ahead suppressed, and the COM port option of our end. Every other option is refused.
///
/// Each option is answered once at most, after RFC 1143, so that no far end can cause a storm of
/// answers.
class TelnetOptions {
public:
    TelnetOptions();

    /// What is sent first.
    static QByteArray requests();
    /// The answer to WILL, WONT, DO or DONT; often empty.
    QByteArray answer(quint8 verb, quint8 option);

    /// Whether the far end has agreed to all that is needed. Go-aheads would only be dropped.
    bool areAgreed() const;
    /// Whether it has refused the option, or has withdrawn it.
    bool isBinaryRefused() const;
    bool isComPortRefused() const;

private:
    enum class State : quint8 { Off, Requested, On, Refused };
    using States = std::array<State, 256>;

    /// What our end does, and the far end.
    States m_ours{};
    States m_theirs{};
};
