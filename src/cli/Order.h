#pragma once

#include "ClockRun.h"
#include "CommonOptions.h"

#include <functional>
#include <variant>

/// What a command does without a clock.
using AloneAction = std::function<ExitStatus(Console& console)>;

/// A command with its options, as it was read from the command line.
struct Order {
    CommonOptions options;
    std::variant<AloneAction, ClockRun::MakeJob> action;
};

/// Carries it out, in an event loop if it needs a clock; the exit status of the program. Needs the
/// application object. The trace counts from `programStart`.
int carryOut(const Order& order, std::chrono::steady_clock::time_point programStart);
