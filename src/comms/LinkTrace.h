#pragma once

#include <QLoggingCategory>

// What the link reports for support, as debug messages of two categories. Both are off until
// somebody switches them on, and then a message costs one test of a flag. Never reported are the
// bytes of the modem's dialogue, nor any others outside a frame: they may hold codes of the SIM
// card.

/// hct.link: ports opened, closed and lost, the link's state, the status of every answer.
Q_DECLARE_LOGGING_CATEGORY(linkEvents)
/// hct.link.frames: each frame sent, and each received with a right checksum, in hexadecimal with
/// its port. Of others only the length: after a header a late echo of a SIM code may follow.
Q_DECLARE_LOGGING_CATEGORY(linkFrames)
