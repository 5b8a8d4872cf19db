#pragma once

#include <QString>

#include <chrono>
#include <optional>

class CommSettings;

/// The options that every command has. Those that are not given are as stored in the settings.
struct CommonOptions {
    /// "COM3", the path of a device such as "/dev/ttyUSB0", or a network address; empty when not
    /// given.
    QString port;
    /// "9600" to "9600,N,8,1"; the parts that are missing are as stored. Empty when not given.
    QString line;
    std::optional<int> station;
    std::optional<int> identification;
    /// The telephone number; empty for a cable.
    QString modemNumber;
    /// In seconds.
    std::optional<int> wait;
    bool json = false;
    bool quiet = false;
    /// The file of the trace; empty when there is none.
    QString trace;

    bool isThroughModem() const { return !modemNumber.isEmpty(); }
    /// How long to try to reach the clock: 10 s, 90 s by modem.
    std::chrono::seconds patience() const;
    /// The path or address that `port` names, empty when it is a COM number or not given. It takes
    /// the place of the device of COM1.
    QString devicePath() const;
    /// What to type for another command to the same clock: "hctctl status --port COM3". `command`
    /// is typed as it is.
    QString commandLine(const QString& command) const;
    /// Puts the options into settings, which are not stored.
    void applyTo(CommSettings& settings) const;
};

/// The number of a text such as "COM3" or "com3", 1 to 16; nothing for any other text.
std::optional<int> comNumber(const QString& port);
/// Completes a text such as "9600,E" by the last parts of `whole`, "9600,N,8,1".
QString completedLine(const QString& line, const QString& whole);
