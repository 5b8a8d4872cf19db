#pragma once

#include "LinkState.h"

#include <QByteArray>
#include <QString>

/// What a modem's replies mean. Words are looked for anywhere in the text, in upper case as modems
/// write them, and not line by line.
namespace modemreplies {

enum class Outcome {
    /// Nothing decisive yet; more may come.
    Awaited,
    Succeeded,
    Failed,
    /// The number called is engaged (dialling alone).
    Busy,
};

struct Verdict {
    Outcome outcome = Outcome::Awaited;
    /// What the terminal says of a success, in Spanish and on one line; empty for those that it
    /// passes over.
    QString line;

    bool operator==(const Verdict&) const = default;
};

/// Judges all that the modem has sent since the command of `phase`. `expected` is what the reply
/// to a command of a script must contain, empty for "OK"; other phases do not look at it. In a
/// phase that is none of the modem's (0, 7, 8) everything is awaited.
Verdict judge(LinkState phase, const QByteArray& received, const QByteArray& expected = {});

} // namespace modemreplies
