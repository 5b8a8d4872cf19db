#pragma once

#include "IntervalTimer.h"

#include <memory>

/// The timer for the 1 ms tick of the timer service: it keeps its beat, by a timerfd on Linux.
/// Disabled it wakes nobody up, but for once at most.
std::unique_ptr<IntervalTimer> makeTickTimer();
