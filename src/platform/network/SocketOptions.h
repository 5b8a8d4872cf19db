#pragma once

#include <QtGlobal>

/// Lets the system end the connection of a socket within 25 seconds after its far end has fallen
/// silent: it asks from the 10th second on, and waits 15 seconds for the acknowledgement of a byte.
/// Systems that cannot do all of that do what they can.
void endWhenFarEndIsDead(qintptr socket);

/// Lets the system acknowledge at once what arrives next. Most device servers send the next piece
/// of an answer only when the one before is acknowledged, which takes 40 ms otherwise. Linux
/// forgets it with what arrives; other systems have no such thing.
void acknowledgeAtOnce(qintptr socket);
