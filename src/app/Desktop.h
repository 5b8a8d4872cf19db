#pragma once

#include <QString>

#include <functional>

class Dialogs;

/// What the program meets of the desktop beside its own windows. Tests put their own in its place.
struct Desktop {
    Dialogs& dialogs;
    /// Runs a program in a normal window and says whether it could.
    std::function<bool(const QString& program)> startProgram;
};

/// The desktop itself, but for the boxes and file dialogs, which are those given.
Desktop systemDesktop(Dialogs& dialogs);
