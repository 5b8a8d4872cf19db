#include "HctctlProcess.h"
#include "SimulatorProcess.h"

#include <QDateTime>
#include <QTest>

using namespace Qt::StringLiterals;

/// `hctctl clock set`, over the line.
class TestClockCommand : public QObject {
    Q_OBJECT
private slots:
    void clockTakesTheComputersTime_data();
    void clockTakesTheComputersTime();
    void clockTakesAGivenTime();
    void clockThatIsRightIsLeftAlone();
    void clockThatIsRightIsLeftAloneOnASlowLine();
    void clockThatIsRightIsNoNewsForAQuietCommand();
    void clockThatIsOffIsSet();
    void clockWithoutADateIsToBeSet();
    void refusalIsTold();
    void silenceIsTold();
    void clockThatShowsAnotherTimeIsTold();
    void clockThatFallsSilentAfterwardsIsTold();
    void momentOfTheFrameIsSent();
};

namespace {

QStringList wrongClock() { return {u"--start"_s, u"2020-01-01T00:00:00"_s}; }

qint64 distanceFromNow(const QString& time)
{
    return qAbs(QDateTime::currentDateTime().secsTo(QDateTime::fromString(time, Qt::ISODate)));
}

} // namespace

void TestClockCommand::clockTakesTheComputersTime_data()
{
    QTest::addColumn<QString>("model");
    QTest::newRow("HCT-7200") << u"7200"_s;
    QTest::newRow("HCT-7300") << u"7300"_s;
}

void TestClockCommand::clockTakesTheComputersTime()
{
    QFETCH(QString, model);
    SimulatorProcess clock(wrongClock() + QStringList{u"--model"_s, model});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"clock"_s, u"set"_s, u"--port"_s, clock.device()}), 0);
    const QString output = hctctl.output();
    QVERIFY(output.startsWith(u"El reloj se ha puesto en hora; estaba "_s));
    QVERIFY(output.endsWith(u" días atrasado.\n"_s));
    QCOMPARE(hctctl.errors(), QString());
    QVERIFY(distanceFromNow(clock.state(u"time"_s)) <= 2);
}

void TestClockCommand::clockTakesAGivenTime()
{
    SimulatorProcess clock({u"--frozen"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"clock"_s, u"set"_s, u"--at"_s, u"2026-11-21T16:06:36"_s, u"--json"_s,
                         u"--port"_s, clock.device()}),
             0);
    const QString output = hctctl.output();
    QCOMPARE(withoutDifference(output),
             uR"({"changed":true,"secondsAhead":N,"time":"2026-11-21T16:06:36"})"_s + u'\n');
    QCOMPARE(readByAnotherProgram(output) + u'\n', output);
    QCOMPARE(clock.state(u"time"_s), u"2026-11-21T16:06:36"_s);
}

void TestClockCommand::clockThatIsRightIsLeftAlone()
{
    const SimulatorProcess clock({u"--fault"_s, u"refuse always on clock"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"clock"_s, u"set"_s, u"--if-off-by"_s, u"60"_s, u"--json"_s, u"--port"_s,
                         clock.device()}),
             0);
    QVERIFY(hctctl.output().startsWith(u"{\"changed\":false,\"secondsAhead\":"_s));
}

// Its answer takes 4 seconds, which the clock is not behind.
void TestClockCommand::clockThatIsRightIsLeftAloneOnASlowLine()
{
    const SimulatorProcess clock({u"--pace"_s, u"600"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"clock"_s, u"set"_s, u"--if-off-by"_s, u"3"_s, u"--json"_s, u"--line"_s,
                         u"600"_s, u"--port"_s, clock.device()}),
             0);
    const QString output = hctctl.output();
    QVERIFY2(output.startsWith(u"{\"changed\":false,\"secondsAhead\":"_s), qPrintable(output));
}

void TestClockCommand::clockThatIsRightIsNoNewsForAQuietCommand()
{
    const SimulatorProcess clock;
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"clock"_s, u"set"_s, u"--if-off-by"_s, u"60"_s, u"--quiet"_s, u"--port"_s,
                         clock.device()}),
             0);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(), QString());
}

void TestClockCommand::clockThatIsOffIsSet()
{
    SimulatorProcess clock(wrongClock());
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"clock"_s, u"set"_s, u"--if-off-by"_s, u"60"_s, u"--json"_s, u"--port"_s,
                         clock.device()}),
             0);
    QVERIFY(hctctl.output().startsWith(u"{\"changed\":true,\"secondsAhead\":"_s));
    QVERIFY(distanceFromNow(clock.state(u"time"_s)) <= 2);
}

void TestClockCommand::clockWithoutADateIsToBeSet()
{
    SimulatorProcess clock;
    clock.command(u"byte 9 45"_s);
    HctctlProcess hctctl;
    hctctl.start({u"clock"_s, u"set"_s, u"--if-off-by"_s, u"60"_s, u"--port"_s, clock.device()});
    // The simulated clock goes on showing day 45.
    QCOMPARE(hctctl.exitStatus(), 1);
    QCOMPARE(hctctl.errors(),
             u"El reloj ha aceptado la hora, pero muestra otra: si al repetir la orden "
             "sigue igual, avise al servicio técnico.\n"_s);
}

void TestClockCommand::refusalIsTold()
{
    const SimulatorProcess clock({u"--fault"_s, u"refuse always on clock"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"clock"_s, u"set"_s, u"--port"_s, clock.device()}), 1);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(),
             u"El reloj no acepta la fecha y la hora: si al repetir la orden sigue "
             "igual, avise al servicio técnico.\n"_s);
}

void TestClockCommand::silenceIsTold()
{
    const SimulatorProcess clock({u"--fault"_s, u"silent always on clock"_s});
    HctctlProcess hctctl;
    QCOMPARE(
        hctctl.run({u"clock"_s, u"set"_s, u"--line"_s, u"115200"_s, u"--port"_s, clock.device()}),
        4);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(),
             u"El reloj ha dejado de contestar y no ha confirmado la hora: compruebe "
             "el cable y repita la orden.\n"_s);
}

void TestClockCommand::clockThatShowsAnotherTimeIsTold()
{
    SimulatorProcess clock;
    clock.command(u"byte 7 3"_s);
    clock.command(u"byte 11 20"_s);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"clock"_s, u"set"_s, u"--port"_s, clock.device()}), 1);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(),
             u"El reloj ha aceptado la hora, pero muestra otra: si al repetir la orden "
             "sigue igual, avise al servicio técnico.\n"_s);
}

void TestClockCommand::clockThatFallsSilentAfterwardsIsTold()
{
    const SimulatorProcess clock({u"--fault"_s, u"silent always after 1 on general"_s});
    HctctlProcess hctctl;
    QCOMPARE(
        hctctl.run({u"clock"_s, u"set"_s, u"--line"_s, u"115200"_s, u"--port"_s, clock.device()}),
        4);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(
        hctctl.errors(),
        u"El reloj ha aceptado la hora, pero no se ha podido comprobar; la que tiene se ve con: "
        "hctctl status --port %1 --line 115200\n"_s.arg(clock.device()));
}

// The first two attempts get no answer: the time sent is that of the third, a second later or more.
void TestClockCommand::momentOfTheFrameIsSent()
{
    SimulatorProcess clock(wrongClock() + QStringList{u"--fault"_s, u"lost times 2 on clock"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"clock"_s, u"set"_s, u"--json"_s, u"--port"_s, clock.device()}), 0);
    const QString output = hctctl.output();
    QVERIFY2(output.contains(u"\"secondsAhead\":0,"_s) ||
                 output.contains(u"\"secondsAhead\":-1,"_s),
             qPrintable(output));
}

QTEST_GUILESS_MAIN(TestClockCommand)
#include "TestClockCommand.moc"
