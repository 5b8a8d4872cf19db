#pragma once

#include "Simulator.h"

#include <QStringList>

namespace simulator {

/// What tests compare: "key=value" lines, always in the same order.
QStringList stateText(Simulator& simulator);

/// The programme in readable form: a line for each active alarm, holiday and vacation.
QStringList programmeText(const ClockProgramme& programme, Model model);

} // namespace simulator
