#pragma once

#include "LinkStatus.h"

/// How hctctl ends. Scripts depend on these numbers. After a signal it ends with 128 and the number
/// of the signal.
enum class ExitStatus {
    Done = 0,
    /// The clock refused, or data differ.
    Refused = 1,
    /// Wrong usage, or a file that cannot be read or written, or must not be sent.
    Usage = 2,
    /// The port cannot be opened, or was lost.
    Port = 3,
    /// Nobody answered.
    Silent = 4,
};

/// How it ends after a signal, as shells and service managers expect of a program that one has
/// ended.
constexpr ExitStatus endedBySignal(int number) { return static_cast<ExitStatus>(128 + number); }

/// How it ends after a request that failed with `status`.
inline ExitStatus exitStatusOf(LinkStatus status)
{
    switch (status) {
    case LinkStatus::Good: return ExitStatus::Done;
    case LinkStatus::TimeOut:
    case LinkStatus::ChecksumError:
    case LinkStatus::ConnectionOver: return ExitStatus::Silent;
    case LinkStatus::Refused:
    case LinkStatus::WrongAnswer: return ExitStatus::Refused;
    case LinkStatus::PortClosed: break;
    }
    return ExitStatus::Port;
}
