#pragma once

#include "FirmwareImage.h"
#include "SimulatedClock.h"

namespace simulator {

/// Request codes without the toggle bit 0x10. Every answer has code 8.
namespace requestcode {
constexpr quint8 Identification = 1;
constexpr quint8 Answer = 8;
constexpr quint8 Write = 105;
constexpr quint8 Read = 137;
} // namespace requestcode

/// Byte 0 of a request's body. The answer repeats it.
namespace area {
constexpr quint8 GeneralData = 0x00;
constexpr quint8 Clock = 0x01;
constexpr quint8 Identification = 0x02;
constexpr quint8 ModeAndOutputs = 0xCA;
constexpr quint8 Outputs = 0xCB;
constexpr quint8 DaysWrite = 0xD2;
constexpr quint8 DaysRead = 0xD9;
constexpr quint8 AlarmBlock = 0xDA;
constexpr quint8 FirmwareLine = 0xDD;
} // namespace area

/// Byte 1 of the answer to a write. Only 0 means that the clock accepted it.
enum class Status : quint8 { Accepted = 0, WrongLength = 1, WrongValue = 2, Unknown = 3 };

/// Answers requests from the state of the clock, and changes that state.
class ClockAnswers {
public:
    ClockAnswers(SimulatedClock& clock, FirmwareImage& firmware, quint8 identification);

    /// The body of the answer. Nothing if the clock does not answer: to an unknown code, to an
    /// empty body, and to a malformed request whose answer has no status byte.
    std::optional<QByteArray> answer(quint8 code, const QByteArray& request);
    /// The body of an answer that refuses, without obeying the request. The status is byte 1; in
    /// general data it is byte 4.
    QByteArray refusal(quint8 code, const QByteArray& request, quint8 status) const;
    /// Whether the last identification opened the session.
    bool isSessionOpen() const { return m_sessionOpen; }
    /// Whether a firmware line that asks for a reset was accepted. Resets itself.
    bool takeResetRequest();

private:
    QByteArray identify(const QByteArray& request);
    std::optional<QByteArray> read(const QByteArray& request);
    std::optional<QByteArray> readModeAndOutputs(const QByteArray& request);
    Status write(const QByteArray& request);
    Status writeClock(const QByteArray& request);
    Status writeOutputs(const QByteArray& request);
    Status writeAlarmBlock(const QByteArray& request);
    Status writeDays(const QByteArray& request);
    Status writeFirmwareLine(const QByteArray& request);

    SimulatedClock& m_clock;
    FirmwareImage& m_firmware;
    quint8 m_identification;
    bool m_sessionOpen = false;
    bool m_resetRequested = false;
};

} // namespace simulator
