#pragma once

#include <QString>

#include <optional>

/// The line parameters of a settings text such as "9600,N,8,1".
struct LineSettings {
    enum class Stop { One, OneAndHalf, Two };

    /// In bit/s, above 0.
    qint32 speed = 9600;
    /// N none, E even, O odd, M mark, S space.
    char parity = 'N';
    /// 4 to 8.
    int dataBits = 8;
    Stop stop = Stop::One;
};

/// The parameters, or the reason in Spanish why the text is wrong.
struct LineSettingsResult {
    std::optional<LineSettings> settings;
    QString reason;
};

/// Whether a receiver tolerates the difference between two speeds in bit/s: at most 3 %. A driver
/// divides a clock and so seldom reaches a speed exactly.
bool isSpeedNear(qint64 actual, qint32 wanted);

/// Reads speed, parity letter, data bits and stop bits, separated by commas. Checks the text only,
/// not what a device supports: 4 data bits are valid here, but few devices support them.
LineSettingsResult parseLineSettings(const QString& text);
