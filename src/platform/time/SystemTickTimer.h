#pragma once

#include "TickTimer.h"

#include <memory>

/// The timer of this system: a TimerFdTickTimer on Linux, a QtTickTimer elsewhere.
std::unique_ptr<TickTimer> makeTickTimer();
