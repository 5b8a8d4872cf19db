#pragma once

#include <QtGlobal>

/// What the communications form is doing. 1 to 6 are the modem's command phases, 7 and 8 the two
/// halves of waiting for a clock's answer.
enum class LinkState {
    Idle = 0,
    ScriptCommand = 1,
    Initialisation = 2,
    PinSent = 3,
    PinQuery = 4,
    SignalQuery = 5,
    Dialling = 6,
    HeaderHunt = 7,
    Body = 8,
};

/// The status that comes with every answer.
namespace linkstatus {
constexpr qint16 Good = 0;
constexpr qint16 TimeOut = 1;
constexpr qint16 ChecksumError = 4;
/// Ends the connection where it is met; the link itself never delivers it.
constexpr qint16 ConnectionOver = 6;
/// Used by the receivers among themselves: the clock refuses.
constexpr qint16 Refused = 7;
/// Used by the receivers among themselves: wrong or short answer.
constexpr qint16 WrongAnswer = 8;
constexpr qint16 PortClosed = 11;
} // namespace linkstatus
