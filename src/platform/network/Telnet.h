#pragma once

#include <QtGlobal>

/// Bytes of the telnet protocol (RFC 854, 855) and of its options (RFC 856, 858, 2217).
namespace telnet {

/// Begins a command. In data it is sent twice.
inline constexpr quint8 IAC = 255;
inline constexpr quint8 DONT = 254;
inline constexpr quint8 DO = 253;
inline constexpr quint8 WONT = 252;
inline constexpr quint8 WILL = 251;
/// Begins a subnegotiation, which IAC SE ends.
inline constexpr quint8 SB = 250;
inline constexpr quint8 SE = 240;

inline constexpr quint8 Binary = 0;
inline constexpr quint8 SuppressGoAhead = 3;
inline constexpr quint8 ComPort = 44;

} // namespace telnet
