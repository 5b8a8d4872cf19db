#include "HctctlProcess.h"
#include "SimulatorProcess.h"

#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

/// Commands that a signal ends: what the clock has not taken is told.
class TestInterruption : public QObject {
    Q_OBJECT
private slots:
    void interruptedSearchIsTold_data();
    void interruptedSearchIsTold();
    void terminatedSearchIsTold();
    void interruptedCommandTellsWhatIsLeft_data();
    void interruptedCommandTellsWhatIsLeft();
    void portIsFreeAfterwards();
};

namespace {

/// Starts a search that nobody answers; the clock does not.
void search(HctctlProcess& hctctl, const SimulatorProcess& silentClock,
            const QStringList& command = {u"status"_s})
{
    hctctl.start(command + QStringList{u"--wait"_s, u"600"_s, u"--line"_s, u"115200"_s, u"--port"_s,
                                       silentClock.device()});
    QCOMPARE(hctctl.nextErrorLine(),
             u"El reloj no contesta por %1; se sigue intentando."_s.arg(silentClock.device()));
}

} // namespace

void TestInterruption::interruptedSearchIsTold_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::newRow("status") << QStringList{u"status"_s};
    QTest::newRow("status --watch") << QStringList{u"status"_s, u"--watch"_s};
    QTest::newRow("clock set") << QStringList{u"clock"_s, u"set"_s};
}

void TestInterruption::interruptedSearchIsTold()
{
    QFETCH(QStringList, command);
    const SimulatorProcess clock({u"--fault"_s, u"silent always"_s});
    HctctlProcess hctctl;
    search(hctctl, clock, command);
    hctctl.interrupt();
    QCOMPARE(hctctl.exitStatus(), 130);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(),
             u"Interrumpido: el reloj no ha contestado todavía, y no se ha cambiado nada en "
             "él.\n"_s);
}

void TestInterruption::terminatedSearchIsTold()
{
#ifdef Q_OS_WIN
    QSKIP("Windows has no such signal.");
#else
    const SimulatorProcess clock({u"--fault"_s, u"silent always"_s});
    HctctlProcess hctctl;
    search(hctctl, clock);
    hctctl.sendSignal(SIGTERM);
    QCOMPARE(hctctl.exitStatus(), 143);
    QCOMPARE(hctctl.errors(),
             u"Interrumpido: el reloj no ha contestado todavía, y no se ha cambiado nada en "
             "él.\n"_s);
#endif
}

void TestInterruption::interruptedCommandTellsWhatIsLeft_data()
{
    QTest::addColumn<QString>("requests");
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QString>("told");
    QTest::newRow("clock set")
        << u"on clock"_s << QStringList{u"clock"_s, u"set"_s, u"--at"_s, u"2030-01-01T00:00:00"_s}
        << u"Interrumpido. El reloj no ha confirmado la hora; la que tiene se ve "
           "con: hctctl status"_s;
    QTest::newRow("outputs") << u"after 1 on mode"_s << QStringList{u"outputs"_s, u"1=on"_s}
                             << u"Interrumpido. El reloj puede haber quedado en modo manual; para "
                                "volver al automático: hctctl outputs auto"_s;
}

// At 300 bit/s the program waits long for the answer that does not come.
void TestInterruption::interruptedCommandTellsWhatIsLeft()
{
    QFETCH(QString, requests);
    QFETCH(QStringList, command);
    QFETCH(QString, told);
    SimulatorProcess clock({u"--frozen"_s, u"--fault"_s, u"silent always "_s + requests});
    HctctlProcess hctctl;
    hctctl.start(command + QStringList{u"--line"_s, u"300"_s, u"--port"_s, clock.device()});
    QTRY_VERIFY_WITH_TIMEOUT(clock.state(u"mode"_s) == u"manual"_s ||
                                 clock.state(u"time"_s) == u"2030-01-01T00:00:00"_s,
                             30000);
    hctctl.interrupt();
    QCOMPARE(hctctl.exitStatus(), 130);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(), told + u" --port %1 --line 300\n"_s.arg(clock.device()));
}

void TestInterruption::portIsFreeAfterwards()
{
    const SimulatorProcess clock;
    HctctlProcess watching;
    watching.start({u"status"_s, u"--watch"_s, u"--port"_s, clock.device()});
    QVERIFY(!watching.nextLine().isEmpty());
    watching.interrupt();
    QCOMPARE(watching.exitStatus(), 0);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--port"_s, clock.device()}), 0);
}

QTEST_GUILESS_MAIN(TestInterruption)
#include "TestInterruption.moc"
