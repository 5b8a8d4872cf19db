#pragma once

#include <QString>

#include <optional>

/// The line parameters of a settings text such as "9600,N,8,1".
struct LineSettings {
    enum class Stop { One, OneAndHalf, Two };

    /// Bits a second, above 0.
    qint32 speed = 9600;
    /// N none, E even, O odd, M mark, S space.
    char parity = 'N';
    /// 4 to 8.
    int dataBits = 8;
    Stop stop = Stop::One;
};

/// The parameters, or in Spanish what is wrong with the text.
struct LineSettingsResult {
    std::optional<LineSettings> settings;
    QString reason;
};

/// Whether a receiver bears with the difference: a divided clock seldom hits a speed, and some 3 %
/// are forgiven. In bits a second.
bool isSpeedNear(qint64 actual, qint32 wanted);

/// Speed, parity letter, data bits and stop bits, joined by commas. Says nothing of what a device
/// can do: 4 data bits are a good text that hardly any device takes.
LineSettingsResult parseLineSettings(const QString& text);
