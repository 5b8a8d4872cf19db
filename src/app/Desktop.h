#pragma once

#include <QString>

#include <functional>

class Dialogs;

/// What the program uses of the desktop besides its own windows. Tests replace it.
struct Desktop {
    Dialogs& dialogs;
    /// Runs a program in a normal window; false when it could not.
    std::function<bool(const QString& program)> startProgram;
};

/// The real desktop, with the given boxes and file dialogs.
Desktop systemDesktop(Dialogs& dialogs);
