#pragma once

#include "FakeDialogs.h"
#include "Program.h"
#include "SettingsOfItsOwn.h"
#include "SimulatorProcess.h"
#include "SystemEnvironment.h"
#include "frmPrincipal.h"

/// Milliseconds a test waits for what must come: only a fault takes them all.
inline constexpr int patience = 30000;

/// The program as `main` composes it, with settings of its own, and COM1 leading to a simulated
/// clock. Boxes are answered by the test; all else is real.
class ConnectedProgram {
public:
    explicit ConnectedProgram(const QStringList& simulatorOptions = {});
    ~ConnectedProgram();

    SimulatorProcess clock;
    FakeDialogs dialogs;

private:
    SettingsOfItsOwn m_settings;
    /// Runs before the program's outside looks at the environment.
    bool m_prepared;

public:
    SystemEnvironment system;
    Program program;

    /// Connects, as the operator does; whether the clock is there then.
    bool connectToClock();
    /// Chooses COM16 for both ways to the clock; nothing stands behind it. Its device's name.
    QString chooseAbsentPort();
    /// As the operator chooses it: nothing happens when it is hidden or disabled.
    void choose(const char* name);
    QString panel(int number);
    QStringList logLines();
    /// How often the log tells `line`.
    qsizetype timesLogged(const QString& line) { return logLines().count(line); }
    bool isEstablished() { return program.session().globais().LinkEstablished; }
    /// The window of that class in the MDI area, when it is shown.
    QWidget* shownForm(const char* className);
    template<typename Form>
    Form* window()
    {
        const auto forms = program.mainWindow().findChildren<Form*>();
        return !forms.isEmpty() && forms.first()->isFormVisible() ? forms.first() : nullptr;
    }
    /// The text of a control of that window.
    QString text(const char* className, const char* control);
};
