#pragma once

#include "ClockOfDay.h"
#include "Pause.h"
#include "PortNames.h"
#include "Program.h"
#include "WidgetDialogs.h"

#include <memory>

/// The outside world itself: the registry, the serial ports, the clocks and the boxes of this
/// machine.
class SystemOutside {
public:
    SystemOutside();
    ~SystemOutside();

    Outside outside();
    /// Boxes and file dialogs answered by `dialogs` instead of the operator.
    Outside outside(Dialogs& dialogs);

private:
    std::unique_ptr<Registry> m_registry;
    PortNames m_portNames;
    std::unique_ptr<SerialPort> m_commSerie;
    std::unique_ptr<SerialPort> m_commModem;
    std::unique_ptr<IntervalTimer> m_tmrCrono;
    std::unique_ptr<IntervalTimer> m_tmrTemporizador;
    SystemClockOfDay m_clock;
    SystemPause m_pause{m_clock};
    WidgetDialogs m_dialogs;
};
