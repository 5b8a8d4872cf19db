#pragma once

#include <QString>

class ClockOfDay;
class IntervalTimer;
class Pause;
class PortNames;
class Registry;
class SerialPort;
class TickTimer;

/// What one session uses of the outside world. Tests replace it. The owner of these objects must
/// outlive the session.
struct Environment {
    Registry& registry;
    const PortNames& portNames;
    SerialPort& commSerie;
    SerialPort& commModem;
    TickTimer& tmrCrono;
    IntervalTimer& tmrTemporizador;
    Pause& pause;
    const ClockOfDay& clock;
    /// Where modem scripts are looked for, with the system's separator at its end.
    QString applicationDirectory;
};
