#pragma once

#include <QtGlobal>

/// Message codes: a request carries 1, 105 or 137, every answer 8.
namespace messagecode {
constexpr quint8 Identification = 1;
constexpr quint8 Answer = 8;
constexpr quint8 Write = 105;
constexpr quint8 Read = 137;
} // namespace messagecode

/// Byte 0 of a body: the data area that a request reads or writes. The answer echoes it.
namespace selector {
constexpr quint8 GeneralData = 0x00;
constexpr quint8 ClockWrite = 0x01;
constexpr quint8 Identification = 0x02;
constexpr quint8 ModeAndOutputsRead = 0xCA;
constexpr quint8 OutputsWrite = 0xCB;
constexpr quint8 HolidaysWrite = 0xD2;
constexpr quint8 HolidaysRead = 0xD9;
constexpr quint8 AlarmBlockWrite = 0xDA;
constexpr quint8 FirmwareLineWrite = 0xDD;
} // namespace selector
