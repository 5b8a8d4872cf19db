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
    /// `variables`, when given, name the devices of COM numbers in place of the environment's.
    explicit SystemEnvironment(const PortNames::Variables& variables = {});
    ~SystemEnvironment();

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
