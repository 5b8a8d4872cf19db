#include "ModemReplies.h"

#include <QTest>

using namespace Qt::StringLiterals;
using modemreplies::Outcome;

Q_DECLARE_METATYPE(LinkState)
Q_DECLARE_METATYPE(modemreplies::Outcome)

class TestModemReplies : public QObject {
    Q_OBJECT
private slots:
    void replyIsJudgedByThePhaseOfItsCommand_data();
    void replyIsJudgedByThePhaseOfItsCommand();
    void signalLevelIsCalculated_data();
    void signalLevelIsCalculated();
    void signalReplyIsAwaitedWhole_data();
    void signalReplyIsAwaitedWhole();
    void expectedTextDecidesAScriptCommand_data();
    void expectedTextDecidesAScriptCommand();
    void otherPhasesDoNotLookAtTheExpectedText();
};

void TestModemReplies::replyIsJudgedByThePhaseOfItsCommand_data()
{
    QTest::addColumn<LinkState>("phase");
    QTest::addColumn<QByteArray>("received");
    QTest::addColumn<Outcome>("outcome");
    QTest::addColumn<QString>("line");
    const auto row = [](const char* name, LinkState phase, const char* received, Outcome outcome,
                        const QString& line = {}) {
        QTest::newRow(name) << phase << QByteArray(received) << outcome << line;
    };
    row("initialisation, nothing yet", LinkState::Initialisation, "", Outcome::Awaited);
    row("initialisation, lower case", LinkState::Initialisation, "\r\nok\r\n", Outcome::Awaited);
    row("initialisation, OK", LinkState::Initialisation, "ATZ\r\r\nOK", Outcome::Succeeded);
    row("initialisation, ERROR before OK", LinkState::Initialisation, "xxERRORxx\r\nOK",
        Outcome::Failed);

    row("PIN sent, nothing yet", LinkState::PinSent, "AT+CPIN=****\r\r\n", Outcome::Awaited);
    row("PIN sent, OK", LinkState::PinSent, "\r\nOK", Outcome::Succeeded,
        u"Código PIN/PUK enviado correctamente"_s);
    row("PIN sent, refused", LinkState::PinSent, "\r\n+CME ERROR: 16\r\n", Outcome::Failed);

    row("PIN query, OK alone", LinkState::PinQuery, "\r\nOK\r\n", Outcome::Awaited);
    row("PIN query, another code", LinkState::PinQuery, "+CPIN: PH-SIM PIN", Outcome::Awaited);
    row("PIN query, lower case", LinkState::PinQuery, "+cpin: ready", Outcome::Awaited);
    row("PIN query, ready", LinkState::PinQuery, "\r\n+CPIN: READY", Outcome::Succeeded,
        u"No se necesita código PIN"_s);
    row("PIN query, PIN", LinkState::PinQuery, "\r\n+CPIN: SIM PIN", Outcome::Succeeded,
        u"Debe introducir el PIN"_s);
    row("PIN query, PUK", LinkState::PinQuery, "\r\n+CPIN: SIM PUK", Outcome::Succeeded,
        u"Debe introducir el código PUK y un nuevo PIN"_s);
    row("PIN query, refused", LinkState::PinQuery, "\r\n+CME ERROR: 10\r\n", Outcome::Failed);

    row("signal, refused", LinkState::SignalQuery, "\r\nERROR\r\n", Outcome::Failed);

    row("dialling, other words", LinkState::Dialling, "RINGING\r\nNO CARRIER\r\nconnect\r\nOK",
        Outcome::Awaited);
    row("dialling, busy", LinkState::Dialling, "\r\nBUSY", Outcome::Busy);
    row("dialling, busy beside connect", LinkState::Dialling, "CONNECT BUSY", Outcome::Busy);
    row("dialling, refused beside busy", LinkState::Dialling, "BUSY ERROR", Outcome::Failed);
    row("dialling, connect", LinkState::Dialling, "\r\nCONNECT", Outcome::Succeeded,
        u"Conexión establecida"_s);
    row("dialling, connect with a rate", LinkState::Dialling, "\r\nCONNECT 9600\r\n",
        Outcome::Succeeded, u"Conexión establecida"_s);
    row("busy in another phase", LinkState::Initialisation, "BUSY", Outcome::Awaited);

    row("idle", LinkState::Idle, "\r\nERROR\r\nOK\r\n", Outcome::Awaited);
    row("a clock's answer", LinkState::HeaderHunt, "ERROR OK", Outcome::Awaited);
    row("the rest of it", LinkState::Body, "ERROR OK", Outcome::Awaited);
}

void TestModemReplies::replyIsJudgedByThePhaseOfItsCommand()
{
    QFETCH(LinkState, phase);
    QFETCH(QByteArray, received);
    const modemreplies::Verdict verdict = modemreplies::judge(phase, received);
    QTEST(verdict.outcome, "outcome");
    QTEST(verdict.line, "line");
}

void TestModemReplies::signalLevelIsCalculated_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("line");
    QTest::newRow("20") << QByteArray("20,0") << u"Nivel de señal -73dBm [-113...-51]"_s;
    QTest::newRow("31") << QByteArray("31,0") << u"Nivel de señal -51dBm [-113...-51]"_s;
    QTest::newRow("0") << QByteArray("0,0") << u"Nivel de señal -113dBm [-113...-51]"_s;
    QTest::newRow("32 says nothing") << QByteArray("32,0") << QString();
    QTest::newRow("50 says nothing") << QByteArray("50,0") << QString();
    QTest::newRow("98 says nothing") << QByteArray("98,0") << QString();
    QTest::newRow("99, no coverage") << QByteArray("99,99") << u"El módem no tiene cobertura"_s;
    QTest::newRow("nonsense") << QByteArray("abc,0") << QString();
    QTest::newRow("no number") << QByteArray(",,,") << QString();
    QTest::newRow("negative") << QByteArray("-5,0") << QString();
    QTest::newRow("more than an int") << QByteArray("99999999999999,0") << QString();
}

void TestModemReplies::signalLevelIsCalculated()
{
    QFETCH(QByteArray, value);
    const modemreplies::Verdict verdict = modemreplies::judge(
        LinkState::SignalQuery, "AT+CSQ\r\r\n+CSQ: " + value + "\r\n\r\nOK\r\n");
    QCOMPARE(verdict.outcome, Outcome::Succeeded);
    QTEST(verdict.line, "line");
}

void TestModemReplies::signalReplyIsAwaitedWhole_data()
{
    QTest::addColumn<QByteArray>("received");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("OK alone") << QByteArray("\r\nOK\r\n");
    QTest::newRow("no comma") << QByteArray("\r\n+CSQ: 20\r\nOK\r\n");
    QTest::newRow("comma before the name") << QByteArray(",\r\n+CSQ: 20\r\nOK\r\n");
    QTest::newRow("without OK") << QByteArray("\r\n+CSQ: 20,0\r\n");
    QTest::newRow("without the last byte") << QByteArray("\r\n+CSQ: 20,0\r\n\r\nOK\r");
    QTest::newRow("more after it") << QByteArray("\r\n+CSQ: 20,0\r\n\r\nOK\r\nx");
}

void TestModemReplies::signalReplyIsAwaitedWhole()
{
    QFETCH(QByteArray, received);
    QCOMPARE(modemreplies::judge(LinkState::SignalQuery, received).outcome, Outcome::Awaited);
}

void TestModemReplies::expectedTextDecidesAScriptCommand_data()
{
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<QByteArray>("received");
    QTest::addColumn<Outcome>("outcome");
    const QByteArray registered = "+CREG: 0,1";
    QTest::newRow("OK") << QByteArray() << QByteArray("\r\nOK") << Outcome::Succeeded;
    QTest::newRow("no OK") << QByteArray() << QByteArray("\r\nO") << Outcome::Awaited;
    QTest::newRow("ERROR") << QByteArray() << QByteArray("OK ERROR") << Outcome::Failed;
    QTest::newRow("as expected") << registered << QByteArray("\r\n+CREG: 0,1")
                                 << Outcome::Succeeded;
    QTest::newRow("another text and OK")
        << registered << QByteArray("\r\n+CREG: 0,2\r\n\r\nOK\r\n") << Outcome::Awaited;
    QTest::newRow("ERROR is expected")
        << QByteArray("ERROR: 3") << QByteArray("+CME ERROR: 3") << Outcome::Failed;
}

void TestModemReplies::expectedTextDecidesAScriptCommand()
{
    QFETCH(QByteArray, expected);
    QFETCH(QByteArray, received);
    const auto verdict = modemreplies::judge(LinkState::ScriptCommand, received, expected);
    QTEST(verdict.outcome, "outcome");
    QCOMPARE(verdict.line, QString());
}

void TestModemReplies::otherPhasesDoNotLookAtTheExpectedText()
{
    QCOMPARE(modemreplies::judge(LinkState::Initialisation, "OK", "READY").outcome,
             Outcome::Succeeded);
    QCOMPARE(modemreplies::judge(LinkState::Initialisation, "READY", "READY").outcome,
             Outcome::Awaited);
}

QTEST_GUILESS_MAIN(TestModemReplies)
#include "TestModemReplies.moc"
