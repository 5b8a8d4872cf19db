#pragma once

#include "FakeDialogs.h"
#include "Program.h"
#include "SimulatorProcess.h"
#include "SystemOutside.h"

#include <QTemporaryDir>

class QAction;

/// The program as `main` composes it, with settings of its own, and COM1 leading to a simulated
/// clock. Boxes are answered by the test; all else is real.
class ConnectedProgram {
public:
    explicit ConnectedProgram(const QStringList& simulatorOptions = {});
    ~ConnectedProgram();

    SimulatorProcess clock;
    FakeDialogs dialogs;

private:
    QTemporaryDir m_settings;
    /// Runs before the program's outside looks at the environment.
    bool m_prepared;

public:
    SystemOutside system;
    Program program;

    /// As the operator chooses it: nothing happens when it is hidden or disabled.
    void choose(const char* name);
    QString panel(int number);
    QStringList logLines();
    /// How often the log tells `line`.
    qsizetype timesLogged(const QString& line) { return logLines().count(line); }
    bool isEstablished() { return program.globais().LinkEstablished; }
    /// The window of that class in the MDI area, when it is shown.
    QWidget* shownForm(const char* className);
    /// The text of a control of that window.
    QString text(const char* className, const char* control);
};
