#pragma once

#include "Registry.h"

#include <QString>

/// The communication settings: twelve texts of the current user's registry, kept as they were read
/// or typed. Nothing is validated here; the numeric readings below say what a senseless text means.
class CommSettings {
public:
    /// Index of the direct port in the channel list: "0" is COM1, "15" is COM16.
    QString directPort = QStringLiteral("0");
    QString directSpeed = QStringLiteral("9600");
    QString directBits = QStringLiteral("8");
    /// "Ninguna", "Par", "Impar", "Marca" or "Espacio"; any other text is no parity.
    QString directParity = QStringLiteral("Ninguna");
    QString directStopBits = QStringLiteral("1");
    /// "On" holds the line on; every other text, "on" among them, means off.
    QString directDtr = QStringLiteral("Off");
    QString directRts = QStringLiteral("Off");
    QString modemPort = QStringLiteral("0");
    QString modemSpeed = QStringLiteral("9600");
    QString modemInitialisation = QStringLiteral("ATZ");
    QString station = QStringLiteral("1");
    QString identification = QStringLiteral("1");

    /// Reads the twelve values; one that cannot be read takes its default.
    void LoadSettings(const Registry& registry);
    /// Writes the twelve values in order and stops at the first that fails; false then. The values
    /// written before it stay written. Waits for another
    /// program that is saving, and fails when that lasts.
    bool SaveSettings(Registry& registry) const;

    /// COM numbers, from 1; 0 or less, or above 16, is a port that does not exist here.
    int directPortNumber() const;
    int modemPortNumber() const;
    /// The settings texts of the ports, "9600,N,8,1".
    QString directLine() const;
    QString modemLine() const;
    bool isDirectDtrOn() const;
    bool isDirectRtsOn() const;

    /// Bit rates for the time-out arithmetic: what is no number above 0 counts as 9600. The ports
    /// get the text itself.
    int directBitRate() const;
    int modemBitRate() const;

    /// Station address and identification number: a text that is no number from 0 to 255 is 0.
    quint8 estacion() const;
    quint8 identificacion() const;
};
