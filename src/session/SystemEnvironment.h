#pragma once

#include "ClockOfDay.h"
#include "Environment.h"
#include "Pause.h"
#include "PortNames.h"

#include <memory>

/// The registry, the serial ports and the clocks of this machine.
class SystemEnvironment {
public:
    SystemEnvironment();
    ~SystemEnvironment();

    Environment environment();

private:
    std::unique_ptr<Registry> m_registry;
    PortNames m_portNames;
    std::unique_ptr<SerialPort> m_commSerie;
    std::unique_ptr<SerialPort> m_commModem;
    std::unique_ptr<IntervalTimer> m_tmrCrono;
    std::unique_ptr<IntervalTimer> m_tmrTemporizador;
    SystemClockOfDay m_clock;
    SystemPause m_pause{m_clock};
};
