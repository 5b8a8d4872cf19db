#pragma once

#include <QtGlobal>

/// Lets the system end the connection of a socket when its far end has been silent for 25 seconds:
/// it asks from the 10th on, and counts from the first byte that is not acknowledged. Systems that
/// cannot do all of that do what they can.
void endWhenFarEndIsDead(qintptr socket);

/// Lets the system acknowledge at once what arrives next. Most device servers send the next piece
/// of an answer only when the one before is acknowledged, which takes 40 ms otherwise. Linux
/// forgets it with what arrives; other systems have no such thing.
void acknowledgeAtOnce(qintptr socket);
