#pragma once

#include "FakeDialogs.h"
#include "Program.h"
#include "SettingsOfItsOwn.h"
#include "SimulatorProcess.h"
#include "SystemEnvironment.h"
#include "frmPrincipal.h"

#include <functional>

/// How many milliseconds a test waits for an event. Only a failing test waits so long.
inline constexpr int patience = 30000;

/// The program as `main` makes it, with settings of its own and a simulated clock on COM1. The test
/// answers boxes; everything else is real.
class ConnectedProgram {
public:
    explicit ConnectedProgram(const QStringList& simulatorOptions = {});
    /// COM1 is what `reach` makes of the clock's device.
    ConnectedProgram(const QStringList& simulatorOptions,
                     const std::function<QString(const QString& device)>& reach);
    ~ConnectedProgram();

    SimulatorProcess clock;
    FakeDialogs dialogs;

private:
    SettingsOfItsOwn m_settings;
    /// Runs before the program reads environment variables.
    bool m_prepared;

public:
    SystemEnvironment system;
    Program program;

    /// Connects as the operator does. Whether the clock answered.
    bool connectToClock();
    /// Chooses COM16, which does not exist, for cable and modem. The name of its device.
    QString chooseAbsentPort();
    /// Chooses a menu entry as the operator does: nothing happens when it is hidden or disabled.
    void choose(const char* name);
    QString panel(int number);
    QStringList logLines();
    /// How often `line` is in the log.
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
