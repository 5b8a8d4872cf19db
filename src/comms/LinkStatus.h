#pragma once

#include <QtGlobal>

/// The status that comes with every answer. The numbers are those of the log's texts.
enum class LinkStatus : qint16 {
    Good = 0,
    TimeOut = 1,
    ChecksumError = 4,
    /// Ends the connection where it is met; the link itself never delivers it.
    ConnectionOver = 6,
    /// Used by the receivers among themselves: the clock refuses.
    Refused = 7,
    /// Used by the receivers among themselves: wrong or short answer.
    WrongAnswer = 8,
    PortClosed = 11,
};
