#pragma once

#include <QtGlobal>

/// What the communications form is doing. 1 to 6 are the modem's command phases, 7 and 8 the two
/// halves of waiting for a clock's answer.
enum class LinkState {
    Idle = 0,
    ScriptCommand = 1,
    Initialisation = 2,
    PinSent = 3,
    PinQuery = 4,
    SignalQuery = 5,
    Dialling = 6,
    HeaderHunt = 7,
    Body = 8,
};
