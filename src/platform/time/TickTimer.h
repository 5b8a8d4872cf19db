#pragma once

#include "IntervalTimer.h"

#include <memory>

/// Makes the timer for the 1 ms tick of the timer service: a TimerFdTimer on Linux, a BeatTimer
/// elsewhere. After it is disabled it wakes the program once at most.
std::unique_ptr<IntervalTimer> makeTickTimer();
