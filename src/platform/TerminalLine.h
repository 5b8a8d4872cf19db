#pragma once

#include <QString>

class TerminationSignals;

/// What a user has typed at the terminal of standard input.
struct TerminalLine {
    /// Without the end of the line. Letters beyond ASCII are right in UTF-8 and, whatever its code
    /// page, in a console of Windows; otherwise each is some other character.
    QString text;
    /// Whether the user has ended it, and so is at the beginning of another.
    bool isComplete = false;
    /// The signal that ended it; 0 when none did.
    int signalNumber = 0;
};

/// Waits until a line is complete, the input ends, or a signal arrives. Lets events run, except on
/// Windows. Needs the application object. The settings of the terminal stay as they are.
TerminalLine readTerminalLine(const TerminationSignals& termination);
