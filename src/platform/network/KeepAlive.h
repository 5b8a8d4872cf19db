#pragma once

#include <QtGlobal>

/// Lets the system end the connection of a socket when its far end has been silent for 25 seconds:
/// it asks from the 10th on, and counts from the first byte that is not acknowledged. Systems that
/// cannot do all of that do what they can.
void endWhenFarEndIsDead(qintptr socket);
