#include "FakeClockOfDay.h"
#include "FakeDialogs.h"
#include "FakePause.h"
#include "FakeTickTimer.h"
#include "FakeTimer.h"
#include "MemoryRegistry.h"
#include "PortNames.h"
#include "Program.h"
#include "QtSerialPort.h"
#include "frmPrincipal.h"

#include <QAction>
#include <QTest>

using namespace Qt::StringLiterals;

/// How often the program asks the system for its ports, which takes milliseconds.
class TestPortListing : public QObject {
    Q_OBJECT
private slots:
    void startConnectionAndSettingsListThePortsTwice();
};

void TestPortListing::startConnectionAndSettingsListThePortsTwice()
{
    int listings = 0;
    MemoryRegistry registry;
    const PortNames names(
        registry, [](const QString&) { return QString(); },
        [&listings] {
            ++listings;
            return QStringList(u"/dev/no-such-port"_s);
        });
    FakeClockOfDay clock;
    FakePause pause(clock);
    FakeTickTimer tmrCrono;
    FakeTimer tmrTemporizador;
    QtSerialPort serie(names);
    QtSerialPort modem(names);
    FakeDialogs dialogs;
    Program program({.registry = registry,
                     .portNames = names,
                     .commSerie = serie,
                     .commModem = modem,
                     .tmrCrono = tmrCrono,
                     .tmrTemporizador = tmrTemporizador,
                     .pause = pause,
                     .clock = clock,
                     .applicationDirectory = u"/opt/hct/"_s},
                    {.dialogs = dialogs, .startProgram = {}});
    program.start();
    QCOMPARE(listings, 0);
    const auto choose = [&program](const QString& entry) {
        program.mainWindow().findChild<QAction*>(entry)->trigger();
    };
    choose(u"mnuConectar"_s);
    QCOMPARE(listings, 1);
    choose(u"mnuConfiguracion"_s);
    QCOMPARE(listings, 2);
}

QTEST_MAIN(TestPortListing)
#include "TestPortListing.moc"
