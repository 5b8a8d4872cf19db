#include "HctctlProcess.h"
#include "Processes.h"
#include "SimulatorProcess.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString otherPort = u" Otro puerto u otra línea se indican con --port y --line; los puertos "
                          "se ven con: hctctl ports\n"_s;

} // namespace

/// How hctctl reaches a clock, and what it tells when it does not. `status` stands for every
/// command.
class TestReachingTheClock : public QObject {
    Q_OBJECT
private slots:
    void missingPortIsTold();
    void portInUseIsTold();
    void silenceIsTold();
    void clockThatAnswersLaterIsReached();
    void damagedAnswersAreTold();
    void wrongIdentificationIsTold();
    void identificationAndStationCanBeGiven();
    void speedOfTheLineCanBeGiven();
    void otherDeviceIsTold();
    void refusedGeneralDataIsTold();
    void comNumberIsThatOfTheProgram();
    void portThatIsLostIsTold_data();
    void portThatIsLostIsTold();
    void traceIsWritten();
    void traceThatCannotBeWrittenIsTold();
};

void TestReachingTheClock::missingPortIsTold()
{
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--port"_s, u"/dev/none"_s}), 3);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(),
             u"No existe /dev/none: compruebe que el adaptador está conectado."_s + otherPort);
}

void TestReachingTheClock::portInUseIsTold()
{
    const SimulatorProcess clock;
    HctctlProcess other;
    other.start({u"status"_s, u"--watch"_s, u"--port"_s, clock.device()});
    QVERIFY(!other.nextLine().isEmpty());
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--port"_s, clock.device()}), 3);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(), clock.device() + u" está en uso por otro programa."_s + otherPort);
}

void TestReachingTheClock::silenceIsTold()
{
    const SimulatorProcess clock({u"--fault"_s, u"silent always"_s});
    HctctlProcess hctctl;
    QCOMPARE(
        hctctl.run({u"status"_s, u"--wait"_s, u"1"_s, u"--quiet"_s, u"--port"_s, clock.device()}),
        4);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(),
             u"Nadie contesta por %1: compruebe el cable, que el reloj tiene corriente, la "
             "velocidad y la estación (1).\n"_s.arg(clock.device()));
}

// Four unanswered identifications end an attempt.
void TestReachingTheClock::clockThatAnswersLaterIsReached()
{
    const SimulatorProcess clock({u"--fault"_s, u"silent times 9"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--line"_s, u"115200"_s, u"--wait"_s, u"60"_s, u"--port"_s,
                         clock.device()}),
             0);
    QCOMPARE(hctctl.errors(),
             u"El reloj no contesta por %1; se sigue intentando.\n"_s.arg(clock.device()));
}

void TestReachingTheClock::damagedAnswersAreTold()
{
    const SimulatorProcess clock({u"--fault"_s, u"checksum always"_s});
    HctctlProcess hctctl;
    QCOMPARE(
        hctctl.run({u"status"_s, u"--wait"_s, u"1"_s, u"--quiet"_s, u"--port"_s, clock.device()}),
        4);
    QCOMPARE(hctctl.errors(),
             u"Las respuestas llegan dañadas por %1: compruebe el cable y la velocidad.\n"_s.arg(
                 clock.device()));
}

void TestReachingTheClock::wrongIdentificationIsTold()
{
    const SimulatorProcess clock({u"--identification"_s, u"35"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--port"_s, clock.device()}), 1);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(),
             u"El reloj no acepta el número de identificación 1: indique el suyo con "
             "--identification.\n"_s);
}

void TestReachingTheClock::identificationAndStationCanBeGiven()
{
    const SimulatorProcess clock(
        {u"--identification"_s, u"35"_s, u"--station"_s, u"10"_s, u"--frozen"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--identification"_s, u"35"_s, u"--station"_s, u"010"_s,
                         u"--port"_s, clock.device()}),
             0);
}

void TestReachingTheClock::speedOfTheLineCanBeGiven()
{
    const SimulatorProcess clock;
    QTemporaryDir folder;
    const QString trace = folder.filePath(u"trace"_s);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--line"_s, u"19200,n"_s, u"--trace"_s, trace, u"--port"_s,
                         clock.device()}),
             0);
    QFile file(trace);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("opened COM1,19200,N,8,1 " + clock.device().toUtf8()));
}

void TestReachingTheClock::otherDeviceIsTold()
{
    const SimulatorProcess clock({u"--type"_s, u"12"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--port"_s, clock.device()}), 1);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(),
             u"El equipo que contesta no es un HCT-7200 ni un HCT-7300 (es de tipo "
             "12): compruebe el puerto y la estación.\n"_s);
}

void TestReachingTheClock::refusedGeneralDataIsTold()
{
    const SimulatorProcess clock({u"--fault"_s, u"refuse always on general"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--wait"_s, u"1"_s, u"--port"_s, clock.device()}), 1);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(),
             u"El equipo contesta, pero no da sus datos generales: compruebe que es "
             "un HCT-7200 o un HCT-7300.\n"_s);
}

void TestReachingTheClock::comNumberIsThatOfTheProgram()
{
    const SimulatorProcess clock;
    qputenv("HCT_COM5", clock.device().toUtf8());
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--port"_s, u"com5"_s}), 0);
    qunsetenv("HCT_COM5");
}

void TestReachingTheClock::portThatIsLostIsTold_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QString>("left");
    QTest::newRow("before the clock has answered")
        << u"vanish 0 on identification"_s << QStringList{u"status"_s} << QString();
    QTest::newRow("clock set") << u"vanish 0 on clock"_s << QStringList{u"clock"_s, u"set"_s}
                               << u" El reloj no ha confirmado la hora; la que tiene se ve con: "
                                  "hctctl status --port %1"_s;
    QTest::newRow("outputs, before the first command")
        << u"vanish 0 on mode"_s << QStringList{u"outputs"_s, u"1=on"_s}
        << u" No se ha conmutado ninguna salida."_s;
    QTest::newRow("outputs") << u"vanish 0 on outputs"_s << QStringList{u"outputs"_s, u"1=on"_s}
                             << u" El reloj puede haber quedado en modo manual; para volver al "
                                "automático: hctctl outputs auto --port %1"_s;
}

void TestReachingTheClock::portThatIsLostIsTold()
{
    QFETCH(QString, fault);
    QFETCH(QStringList, command);
    QFETCH(QString, left);
    const SimulatorProcess clock({u"--fault"_s, fault});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run(command + QStringList{u"--port"_s, clock.device()}), 3);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(
        hctctl.errors(),
        u"Se ha perdido el puerto %1: compruebe que el adaptador está conectado y repita la "
        "orden.%2\n"_s.arg(clock.device(), left.contains(u'%') ? left.arg(clock.device()) : left));
}

void TestReachingTheClock::traceIsWritten()
{
    const SimulatorProcess clock;
    QTemporaryDir folder;
    const QString trace = folder.filePath(u"trace"_s);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"--trace"_s, trace, u"status"_s, u"--port"_s, clock.device()}), 0);
    QFile file(trace);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QVERIFY(text.contains(" hctctl 2.0.1, Qt "));
    QVERIFY(text.contains(" sent 680404680101020105"));
}

void TestReachingTheClock::traceThatCannotBeWrittenIsTold()
{
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"--trace"_s, u"/dev/null/trace"_s, u"status"_s}), 2);
    const QString errors = hctctl.errors();
    QVERIFY(errors.startsWith(u"No se puede escribir la traza en /dev/null/trace ("_s));
    QVERIFY(errors.endsWith(u"). Indique otro archivo con --trace.\n"_s));
}

QTEST_GUILESS_MAIN(TestReachingTheClock)
#include "TestReachingTheClock.moc"
