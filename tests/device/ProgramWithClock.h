#pragma once

#include "FakeDialogs.h"
#include "MdiForm.h"
#include "MessageLink.h"
#include "Program.h"
#include "SimulatorProcess.h"
#include "SystemOutside.h"
#include "frmPrincipal.h"
#include "frmRexistroEstado.h"

#include <QAction>
#include <QApplication>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// The whole program, off screen and with boxes that the test answers, on the line of a simulated
/// clock.
class ProgramWithClock {
public:
    /// `arguments` are the simulator's.
    explicit ProgramWithClock(const QStringList& arguments = {}) : clock(arguments)
    {
        clock.closeDevice();
        qputenv("XDG_CONFIG_HOME", m_configuration.path().toLocal8Bit());
        qputenv("HCT_COM1", clock.device.toLocal8Bit());
        m_outside = std::make_unique<SystemOutside>();
        program = std::make_unique<Program>(m_outside->outside(dialogs));
        // A lost answer is then waited for 350 ms, not 800.
        program->settings().directSpeed = QStringLiteral("38400");
        program->link().ApplySettings();
        program->start();
    }
    ~ProgramWithClock()
    {
        dialogs.whileUp = nullptr;
        program->mainWindow().unload();
    }
    ProgramWithClock(const ProgramWithClock&) = delete;
    ProgramWithClock& operator=(const ProgramWithClock&) = delete;

    SimulatorProcess clock;
    FakeDialogs dialogs;

private:
    QTemporaryDir m_configuration;
    std::unique_ptr<SystemOutside> m_outside;

public:
    std::unique_ptr<Program> program;

    /// Chooses an entry of the menus.
    void choose(const QString& entry) const
    {
        program->mainWindow().findChild<QAction*>(entry)->trigger();
    }
    bool connectToClock() const
    {
        choose(QStringLiteral("mnuConectar"));
        return QTest::qWaitFor([this] { return program->globais().LinkEstablished; }, 10000);
    }
    bool hasConnection() const { return program->globais().LinkEstablished; }

    /// A window of the main window, or nothing when it is not open.
    template<typename Form>
    Form* window() const
    {
        const auto forms = program->mainWindow().findChildren<Form*>();
        return !forms.isEmpty() && forms.first()->isFormVisible() ? forms.first() : nullptr;
    }
    QString log() const { return program->log().findChild<QPlainTextEdit*>()->toPlainText(); }
    int linesWith(const QString& message) const { return int(log().count(message)); }
};
