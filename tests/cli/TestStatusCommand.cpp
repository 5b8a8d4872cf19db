#include "HctctlProcess.h"
#include "SimulatorProcess.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// `hctctl status`, over the line.
class TestStatusCommand : public QObject {
    Q_OBJECT
private slots:
    void stateIsAnObject_data();
    void stateIsAnObject();
    void stateIsAText();
    void impossibleDateIsNull();
    void changesArePrintedUntilASignal();
    void watchEndsWhenNobodyReads();
    void clockThatFallsSilentEndsTheWatch();
};

namespace {

QStringList standingClock() { return {u"--start"_s, u"2026-11-21T16:06:36"_s, u"--frozen"_s}; }

} // namespace

void TestStatusCommand::stateIsAnObject_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("object");
    const QString begin =
        uR"({"deviceType":11,"flags":{"adjustmentInhibited":false,"battery":false,)"
        R"("generalFault":false,"remoteControl":false,"winter":true},)"_s;
    const QString end =
        uR"("outputs":[false,false,false],"secondsAhead":N,"time":"2026-11-21T16:06:36"})"_s;
    QTest::newRow("HCT-7200") << u"7200"_s
                              << begin +
                                     uR"("inputs":{"P1":true,"P2":false,"sensor":false},)"
                                     R"("model":"HCT-7200",)"_s +
                                     end;
    QTest::newRow("HCT-7300") << u"7300"_s << begin + uR"("model":"HCT-7300",)"_s + end;
}

void TestStatusCommand::stateIsAnObject()
{
    QFETCH(QString, model);
    QFETCH(QString, object);
    const SimulatorProcess clock(standingClock() + QStringList{u"--model"_s, model, u"--inputs"_s,
                                                               u"0x90"_s, u"--flags"_s, u"1"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"--port"_s, clock.device(), u"status"_s, u"--json"_s}), 0);
    const QString output = hctctl.output();
    QCOMPARE(withoutDifference(output), object + u'\n');
    QCOMPARE(readByAnotherProgram(output) + u'\n', output);
    QCOMPARE(hctctl.errors(), QString());
}

void TestStatusCommand::stateIsAText()
{
    const SimulatorProcess clock(standingClock());
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--port"_s, clock.device()}), 0);
    const QString output = hctctl.output();
    QVERIFY(output.startsWith(u"Modelo:          HCT-7200\n"
                              "Fecha:           sábado, 21 de noviembre de 2026\n"
                              "Hora:            16:06:36 ("_s));
    QVERIFY(output.endsWith(u"Fallo general:   no\n"_s));
    QCOMPARE(hctctl.errors(), QString());
}

void TestStatusCommand::impossibleDateIsNull()
{
    SimulatorProcess clock(standingClock());
    clock.command(u"byte 9 45"_s);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--port"_s, clock.device(), u"--json"_s}), 0);
    const QString output = hctctl.output();
    QVERIFY(output.contains(u"\"rawTime\":[36,6,16,6,45,11,26],\"secondsAhead\":null,"
                            "\"time\":null"_s));
    QCOMPARE(readByAnotherProgram(output) + u'\n', output);
}

void TestStatusCommand::changesArePrintedUntilASignal()
{
    SimulatorProcess clock(standingClock());
    HctctlProcess hctctl;
    hctctl.start({u"status"_s, u"--watch"_s, u"--json"_s, u"--port"_s, clock.device()});
    QVERIFY(hctctl.nextLine().contains(u"\"outputs\":[false,false,false]"_s));
    clock.command(u"outputs 1"_s);
    QVERIFY(hctctl.nextLine().contains(u"\"outputs\":[false,false,true]"_s));
    clock.command(u"inputs 0x00"_s);
    QVERIFY(hctctl.nextLine().contains(u"{\"P1\":true,\"P2\":true,\"sensor\":true}"_s));
    hctctl.interrupt();
    QCOMPARE(hctctl.exitStatus(), 0);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(), QString());
}

void TestStatusCommand::watchEndsWhenNobodyReads()
{
#ifdef Q_OS_WIN
    QSKIP("There is no shell that tells the status of the first program of a pipe.");
#else
    const SimulatorProcess clock;
    HctctlProcess hctctl;
    QCOMPARE(hctctl.runInShell(u"\"$0\" \"$@\" | head -n 1; exit ${PIPESTATUS[0]}"_s,
                               {u"status"_s, u"--watch"_s, u"--port"_s, clock.device()}),
             0);
    QVERIFY(hctctl.output().contains(u"modo automático"_s));
    QCOMPARE(hctctl.errors(), QString());
#endif
}

void TestStatusCommand::clockThatFallsSilentEndsTheWatch()
{
    SimulatorProcess clock(standingClock());
    HctctlProcess hctctl;
    hctctl.start(
        {u"status"_s, u"--watch"_s, u"--port"_s, clock.device(), u"--line"_s, u"115200"_s});
    QVERIFY(hctctl.nextLine().contains(u"modo automático"_s));
    clock.command(u"fault silent always"_s);
    QCOMPARE(hctctl.exitStatus(), 4);
    QCOMPARE(hctctl.errors(), u"El reloj ha dejado de contestar: compruebe el cable y que el reloj "
                              "tiene corriente.\n"_s);
}

QTEST_GUILESS_MAIN(TestStatusCommand)
#include "TestStatusCommand.moc"
