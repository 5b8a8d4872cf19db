#pragma once

#include "ClockOfDay.h"
#include "Environment.h"
#include "Pause.h"
#include "PortNames.h"
#include "TickTimer.h"

#include <memory>

/// The environment of this machine: its registry, serial ports, timers and clock.
class SystemEnvironment {
public:
    SystemEnvironment();
    ~SystemEnvironment();

    /// The device of a COM number, whatever else names it. Call before the port is opened.
    void setDevice(int number, const QString& device) { m_portNames.setDevice(number, device); }
    /// References to members of this, and the current directory.
    Environment environment();

private:
    std::unique_ptr<Registry> m_registry;
    PortNames m_portNames;
    std::unique_ptr<SerialPort> m_commSerie;
    std::unique_ptr<SerialPort> m_commModem;
    std::unique_ptr<TickTimer> m_tmrCrono;
    std::unique_ptr<IntervalTimer> m_tmrTemporizador;
    SystemClockOfDay m_clock;
    SystemPause m_pause{m_clock};
};
