#pragma once

#include "LineSettings.h"

#include <QByteArray>

/// The commands of the COM port option (RFC 2217, section 3) as bytes for the connection.
namespace comport {

/// Codes of commands. An answer has the command's code and 100.
enum Code : quint8 {
    SetSpeed = 1,
    SetDataSize = 2,
    SetParity = 3,
    SetStopSize = 4,
    SetControl = 5,
    SuspendFlow = 8,
    ResumeFlow = 9,
    Purge = 12,
};
inline constexpr quint8 answerOffset = 100;

/// Data as it is sent: each byte 0xFF twice.
QByteArray escaped(const QByteArray& data);

/// A command with its value, within a subnegotiation.
QByteArray command(Code code, const QByteArray& value);

/// The values of the commands that set the line.
QByteArray speedValue(const LineSettings& settings);
QByteArray dataSizeValue(const LineSettings& settings);
QByteArray parityValue(const LineSettings& settings);
QByteArray stopSizeValue(const LineSettings& settings);

/// Sets speed, data bits, parity and stop bits, without flow control.
QByteArray setLine(const LineSettings& settings);
QByteArray setDtrAndRts(bool dtr, bool rts);
/// Discards what the far end has received from the line and not sent on, or the opposite.
QByteArray purgeReceived();
QByteArray purgeToSend();

} // namespace comport
