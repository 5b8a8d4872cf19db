#include "SimulatorProcess.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr const char* identification = "68040468010102010516";
constexpr const char* accepted = "68040468010802000b16";

/// A simulator behind a modem that connects at once and does not echo.
QStringList modem(const QStringList& more = {})
{
    return QStringList{u"--modem"_s, u"--echo"_s, u"off"_s, u"--dial-delay"_s, u"0"_s} + more;
}

QByteArray say(SimulatorProcess& simulator, const char* text, const char* expected)
{
    simulator.write(text);
    return simulator.read(qsizetype(qstrlen(expected)));
}

} // namespace

class TestSimulatedModem : public QObject {
    Q_OBJECT

private slots:
    void clockIsReachedByACall();
    void clockDoesNotAnswerBeforeTheCall();
    void closingTheDeviceHangsUp();
    void commandHangsUp();
    void repliesAreSplitAtEveryByte();
    void stateTellsTheCall();
    void traceHidesThePin();
    void vanishingLineEndsTheCall();
    void resetHangsUp();
    void commandsAreChecked_data();
    void commandsAreChecked();
};

void TestSimulatedModem::clockIsReachedByACall()
{
    SimulatorProcess simulator(modem());
    const char* connect = "\r\nCONNECT 9600\r\n";
    QCOMPARE(say(simulator, "ATZ\r\n", "\r\nOK\r\n"), QByteArray("\r\nOK\r\n"));
    QCOMPARE(say(simulator, "ATD986123456\r\n", connect), QByteArray(connect));
    QCOMPARE(simulator.readLine(), u"event call"_s);
    QCOMPARE(simulator.exchange(identification, 10), QByteArray(accepted));
    QCOMPARE(say(simulator, "+++ATH\r\n", "\r\nOK\r\n"), QByteArray("\r\nOK\r\n"));
    QCOMPARE(simulator.readLine(), u"event hangup"_s);
}

void TestSimulatedModem::clockDoesNotAnswerBeforeTheCall()
{
    SimulatorProcess simulator(modem());
    QCOMPARE(simulator.exchange(identification, 10, 100), QByteArray());
}

void TestSimulatedModem::closingTheDeviceHangsUp()
{
    SimulatorProcess simulator(modem({u"--dial"_s, u"connect"_s}));
    const char* connect = "\r\nCONNECT\r\n";
    QCOMPARE(say(simulator, "ATD1\r\n", connect), QByteArray(connect));
    QCOMPARE(simulator.readLine(), u"event call"_s);
    simulator.closeDevice();
    QCOMPARE(simulator.readLine(), u"event hangup"_s);
    QVERIFY(simulator.openDevice());
    QCOMPARE(say(simulator, "AT\r\n", "\r\nOK\r\n"), QByteArray("\r\nOK\r\n"));
}

void TestSimulatedModem::commandHangsUp()
{
    SimulatorProcess simulator(modem());
    say(simulator, "ATD1\r\n", "\r\nCONNECT 9600\r\n");
    QCOMPARE(simulator.readLine(), u"event call"_s);
    QCOMPARE(simulator.command(u"modem hangup"_s), (QStringList{u"event hangup"_s, u"ok"_s}));
    QCOMPARE(simulator.read(14), QByteArray("\r\nNO CARRIER\r\n"));
}

void TestSimulatedModem::repliesAreSplitAtEveryByte()
{
    SimulatorProcess simulator(modem({u"--modem-split"_s, u"10"_s}));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(say(simulator, "AT\r\n", "\r\nOK\r\n"), QByteArray("\r\nOK\r\n"));
    QVERIFY(timer.elapsed() >= 60);
}

void TestSimulatedModem::stateTellsTheCall()
{
    SimulatorProcess simulator(modem({u"--sim"_s, u"puk"_s}));
    QCOMPARE(simulator.command(u"modem state"_s),
             (QStringList{u"modem=command"_s, u"dialled="_s, u"sim=SIM PUK"_s, u"ok"_s}));
    QCOMPARE(simulator.command(u"modem sim ready"_s), QStringList{u"ok"_s});
    say(simulator, "ATD555\r\n", "\r\nCONNECT 9600\r\n");
    QCOMPARE(simulator.readLine(), u"event call"_s);
    QCOMPARE(simulator.command(u"modem state"_s),
             (QStringList{u"modem=call"_s, u"dialled=555"_s, u"sim=READY"_s, u"ok"_s}));
}

void TestSimulatedModem::traceHidesThePin()
{
    SimulatorProcess simulator(
        {u"--modem"_s, u"--trace"_s, u"--sim"_s, u"pin"_s, u"--pin"_s, u"9876"_s});
    const char* echoed = "AT+CPIN=9876\r\r\nOK\r\n\n";
    QCOMPARE(say(simulator, "AT+CPIN=9876\r\n", echoed), QByteArray(echoed));
    QVERIFY(simulator.readLine().endsWith(u" < AT+CPIN=****"_s));
    QVERIFY(simulator.readLine().endsWith(u" > OK"_s));
}

void TestSimulatedModem::vanishingLineEndsTheCall()
{
    SimulatorProcess simulator(modem());
    say(simulator, "ATD1\r\n", "\r\nCONNECT 9600\r\n");
    QCOMPARE(simulator.readLine(), u"event call"_s);
    QCOMPARE(simulator.command(u"vanish"_s),
             (QStringList{u"event hangup"_s, u"event vanished"_s, u"ok"_s}));
}

void TestSimulatedModem::resetHangsUp()
{
    SimulatorProcess simulator(modem());
    say(simulator, "ATD1\r\n", "\r\nCONNECT 9600\r\n");
    QCOMPARE(simulator.exchange("680f0f680169dd0410000100ff010203041b008016", 24),
             QByteArray("680404680108dd00e616") + QByteArray("\r\nNO CARRIER\r\n").toHex());
}

void TestSimulatedModem::commandsAreChecked_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"modem",
                             "modem none",
                             "modem echo",
                             "modem echo maybe",
                             "modem sim x",
                             "modem signal 256",
                             "modem dial x",
                             "modem dial connect fast",
                             "modem dial-delay -1",
                             "modem split 1001",
                             "modem reply",
                             "none",
                             "vanish -1",
                             "pace fast",
                             "time tomorrow",
                             "byte 220 1",
                             "byte 1",
                             "outputs 8",
                             "programme /none.hct",
                             "save /none/at/all.hct",
                             "firmware",
                             "firmware hex",
                             "after-reset",
                             "after-reset explode",
                             "clock",
                             "mode",
                             "trace",
                             "faults all"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TestSimulatedModem::commandsAreChecked()
{
    QFETCH(QString, text);
    SimulatorProcess simulator;
    const QStringList lines = simulator.command(text);
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].startsWith(u"error: "_s), qPrintable(lines[0]));
}

QTEST_GUILESS_MAIN(TestSimulatedModem)
#include "TestSimulatedModem.moc"
