#pragma once

#include "ClockRun.h"
#include "CommonOptions.h"

#include <QStringList>

#include <functional>
#include <variant>

/// What a command does without a clock.
using AloneAction = std::function<ExitStatus(Console& console)>;

/// What a command does with a clock.
struct ClockAction {
    ClockRun::MakeJob makeJob;
    /// Asked before the port is opened: any other status than Done ends the program. May be empty.
    AloneAction precondition;
};

/// A command with its options, as it was read from the command line.
struct Order {
    CommonOptions options;
    /// Those that the command names as its arguments. The trace must be another.
    QStringList files;
    std::variant<AloneAction, ClockAction> action;
};

/// Carries it out, in an event loop if it needs a clock; how the program ends. Needs the
/// application object. The trace counts from `programStart`.
ExitStatus carryOut(const Order& order, std::chrono::steady_clock::time_point programStart);
