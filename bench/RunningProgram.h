#pragma once

#include "ConnectionWorkflow.h"
#include "MessageLink.h"
#include "Program.h"
#include "SystemEnvironment.h"
#include "WidgetDialogs.h"
#include "frmPrincipal.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>

#include <functional>

/// Lets events run until `isSo`, so many milliseconds at most.
inline bool waitFor(const std::function<bool()>& isSo, int patience = 20000)
{
    // A timer, because no other event may come.
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(patience);
    while (!isSo() && limit.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return isSo();
}

/// The simulated clock on COM1. It ends with this object.
class Clock {
public:
    Clock(const QString& simulator, int rate)
        : Clock(simulator, rate > 0 ? QStringList{QStringLiteral("--pace"), QString::number(rate)}
                                    : QStringList())
    {}
    Clock(const QString& simulator, const QStringList& options)
    {
        m_process.start(
            simulator,
            QStringList{QStringLiteral("--exit-with-parent"), QStringLiteral("--stay")} + options);
        if (m_process.waitForReadyRead(10000))
            qputenv("HCT_COM1", m_process.readLine().trimmed());
    }
    ~Clock()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
};

/// The program with its windows off screen.
struct Running {
    SystemEnvironment system;
    WidgetDialogs boxes;
    Program program;
    int answers = 0;

    Running() : Running(nullptr) {}
    /// Its boxes and file dialogs are answered by `dialogs`.
    explicit Running(Dialogs& dialogs) : Running(&dialogs) {}
    bool connectAt(int rate)
    {
        if (rate > 0)
            program.session().settings().directSpeed = QString::number(rate);
        program.session().link().ApplySettings();
        program.session().workflow().Conectar(false);
        return waitFor([this] { return program.session().workflow().Established(); });
    }

private:
    explicit Running(Dialogs* dialogs)
        : program(system.environment(), systemDesktop(dialogs ? *dialogs : boxes))
    {
        QObject::connect(&program.session().link(), &MessageLink::becameIdle, &program.mainWindow(),
                         [this] { ++answers; });
        program.start();
    }
};
