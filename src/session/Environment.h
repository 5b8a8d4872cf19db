#pragma once

#include <QString>

class ClockOfDay;
class IntervalTimer;
class Pause;
class PortNames;
class Registry;
class SerialPort;

/// What one session meets of the outside world. Tests put their own in its place.
struct Environment {
    Registry& registry;
    const PortNames& portNames;
    SerialPort& commSerie;
    SerialPort& commModem;
    IntervalTimer& tmrCrono;
    IntervalTimer& tmrTemporizador;
    Pause& pause;
    const ClockOfDay& clock;
    /// Ends in the system's separator.
    QString applicationDirectory;
};
