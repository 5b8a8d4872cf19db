#pragma once

#include "FakeClockOfDay.h"
#include "FakeDialogs.h"
#include "FakePause.h"
#include "FakeSerialPort.h"
#include "FakeTickTimer.h"
#include "FakeTimer.h"
#include "MemoryRegistry.h"
#include "PortNames.h"
#include "Program.h"

#include <QByteArray>
#include <QStringList>

class QAction;
class QLabel;
class QMdiSubWindow;

/// The whole program, shown, with a fake environment.
struct ProgramFixture {
    ProgramFixture();

    FakeClockOfDay clock;
    FakePause pause{clock};
    FakeTickTimer tmrCrono;
    FakeTimer tmrTemporizador;
    FakeSerialPort serie{clock};
    FakeSerialPort modem{clock};
    MemoryRegistry registry;
    PortNames portNames{registry, [](const QString&) { return QString(); },
                        [] { return QStringList(); }};
    FakeDialogs dialogs;
    QStringList started;
    Program program;

    QAction* action(const char* name);
    /// Chooses a menu entry as the operator does: nothing happens when it is hidden or disabled.
    void choose(const char* name);
    QString panel(int number);
    QLabel* panelLabel(int number);
    /// The lines of the log without date and time.
    QStringList logLines();

    void tick(int times);
    void answer(const QByteArray& body);
    /// Connects to a clock that answers with `block`.
    void establish(const QByteArray& block);
    /// The classes of the windows shown in the MDI area, in the order of their opening.
    QStringList shownForms();
    QMdiSubWindow* frameOf(const char* formClass);
    /// The class of the modal window; empty for none.
    static QString modalWindow();
};
