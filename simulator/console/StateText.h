#pragma once

#include "Simulator.h"

#include <QStringList>

namespace simulator {

/// All that a test may want to compare, one "key=value" a line, always in the same order.
QStringList stateText(Simulator& simulator);

/// The programme for people: each active alarm, holiday and vacation in a line.
QStringList programmeText(const ClockProgramme& programme, Model model);

} // namespace simulator
