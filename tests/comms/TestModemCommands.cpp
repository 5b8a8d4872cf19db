#include "ModemFixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TestModemCommands : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void pinQueryTellsWhatTheCardNeeds_data();
    void pinQueryTellsWhatTheCardNeeds();
    void pinQueryWithErrorFails();
    void pinQueryWithoutAnswerFails();
    void otherAnswerToThePinQueryKeepsWaiting();
    void closedPortIsToldInTheTerminal();

    void pinIsSentAndShownMasked();
    void pukAndNewPinAreSentAndShownMasked();
    void pukAloneIsNeverSent();
    void echoedCodesAreMaskedAtEverySplit();
    void refusedPinFailsOnce();
    void lateEchoIsMaskedToo();

    void signalLevelIsWritten_data();
    void signalLevelIsWritten();
    void signalReplyIsGatheredOverPortions();
    void signalQueryWithErrorFails();
    void failureIsToldOnceAndTheCommandEndsWhenItIsAcknowledged();

    void commandTakesBackWhatHasNotLeftYet();
    void commandInProgressKeepsOthersOut();
    void endlessReplyIsKeptWithinItsBound();
    void wordsOfAnIdleModemAreShown();
    void typedCharacterIsSentAndShownOnce();
    void characterTypedWhileACommandRunsIsNotSent();
    void characterTypedWhileARequestIsOutstandingIsNotSent();
    void characterTypedWithoutPortIsToldInTheTerminal();
    void codeTypedByHandIsMasked();
    void codeCorrectedWhileTypedByHandIsMasked();
    void halfTypedCodeMasksNothingAfterTheConnection();
    void modemFoundGoneInMidCommandFailsOnce();
    void modemUnpluggedAndBackBeforeAnyoneLooksIsToldByTheTimeOut();
    void modemThatVanishesWithoutACommandIsNoFailure();
    void bytesOfAnAnswerAreLeftToTheLink();
    void endOfTheConnectionEnablesTheControls();
    void acknowledgementAfterTheEndLeavesTheNextCommandAlone();
    void answerThatNobodyAwaitsIsIgnored();
    void controlMayGoWhileItTellsOfAFailure();

private:
    std::unique_ptr<ModemFixture> m_modem;
};

void TestModemCommands::init() { m_modem = std::make_unique<ModemFixture>(); }

void TestModemCommands::cleanup() { m_modem.reset(); }

void TestModemCommands::pinQueryTellsWhatTheCardNeeds_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("line");
    QTest::newRow("ready") << QByteArray("\r\n+CPIN: READY")
                           << u"\r\n** No se necesita código PIN\r\n"_s;
    QTest::newRow("PIN") << QByteArray("\r\n+CPIN: SIM PIN")
                         << u"\r\n** Debe introducir el PIN\r\n"_s;
    QTest::newRow("PUK") << QByteArray("\r\n+CPIN: SIM PUK")
                         << u"\r\n** Debe introducir el código PUK y un nuevo PIN\r\n"_s;
}

void TestModemCommands::pinQueryTellsWhatTheCardNeeds()
{
    QFETCH(QByteArray, reply);
    QFETCH(QString, line);
    m_modem->control.checkPin();
    QCOMPARE(m_modem->link.state(), LinkState::PinQuery);
    QCOMPARE(m_modem->takeCommand(), QByteArray("AT+CPIN?\r\n"));
    QCOMPARE(m_modem->takeTerminal(), u"AT+CPIN?\r\n"_s);
    QCOMPARE(m_modem->tmrTemporizador.interval(), 3000ms);
    QVERIFY(!m_modem->controlsEnabled);
    m_modem->modem.arriveBytewise(reply);
    QCOMPARE(m_modem->takeTerminal(), QString::fromLatin1(reply) + line);
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(m_modem->questions.isEmpty());
}

void TestModemCommands::pinQueryWithErrorFails()
{
    m_modem->control.checkPin();
    m_modem->reply("\r\n+CME ERROR: 10\r\n");
    QCOMPARE(m_modem->questions, QStringList{u"failed 4"_s});
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
}

void TestModemCommands::pinQueryWithoutAnswerFails()
{
    m_modem->control.checkPin();
    QVERIFY(m_modem->tmrTemporizador.fire());
    QCOMPARE(m_modem->questions, QStringList{u"failed 4"_s});
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
}

void TestModemCommands::otherAnswerToThePinQueryKeepsWaiting()
{
    m_modem->control.checkPin();
    m_modem->reply("\r\nOK\r\n+CPIN: PH-SIM PIN\r\n+cpin: ready\r\n");
    QCOMPARE(m_modem->link.state(), LinkState::PinQuery);
    QVERIFY(m_modem->tmrTemporizador.isRunning());
}

void TestModemCommands::closedPortIsToldInTheTerminal()
{
    m_modem->modem.refusal = u"No existe"_s;
    m_modem->control.checkPin();
    m_modem->control.querySignal();
    m_modem->control.executeScript();
    m_modem->control.sendPin("1234", "");
    QCOMPARE(m_modem->terminal, u"\r\n** No se ha podido abrir el puerto serie\r\n"_s.repeated(4));
    QVERIFY(m_modem->takeCommand().isEmpty());
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(m_modem->questions.isEmpty());
}

void TestModemCommands::pinIsSentAndShownMasked()
{
    m_modem->control.sendPin("1234", "");
    QCOMPARE(m_modem->link.state(), LinkState::PinSent);
    QCOMPARE(m_modem->takeCommand(), QByteArray("AT+CPIN=1234\r\n"));
    QCOMPARE(m_modem->takeTerminal(), u"AT+CPIN=****"_s);
    QCOMPARE(m_modem->tmrTemporizador.interval(), 5000ms);
    QVERIFY(!m_modem->controlsEnabled);
    m_modem->reply("\r\nOK");
    QCOMPARE(m_modem->takeTerminal(), u"\r\nOK\r\n** Código PIN/PUK enviado correctamente\r\n"_s);
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(m_modem->controlsEnabled);
}

void TestModemCommands::pukAndNewPinAreSentAndShownMasked()
{
    m_modem->control.sendPin("4321", "12345678");
    QCOMPARE(m_modem->takeCommand(), QByteArray("AT+CPIN=12345678,4321\r\n"));
    QCOMPARE(m_modem->takeTerminal(), u"AT+CPIN=********,****"_s);
}

void TestModemCommands::pukAloneIsNeverSent()
{
    m_modem->control.sendPin("", "12345678");
    QVERIFY(m_modem->takeCommand().isEmpty());
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(m_modem->terminal.isEmpty());
}

void TestModemCommands::echoedCodesAreMaskedAtEverySplit()
{
    m_modem->control.sendPin("4321", "12345678");
    m_modem->takeTerminal();
    m_modem->modem.arriveBytewise("AT+CPIN=12345678,4321\r\r\nOK\r\n");
    QCOMPARE(m_modem->takeTerminal(),
             u"AT+CPIN=********,****\r\r\nOK\r\n** Código PIN/PUK enviado correctamente\r\n\r\n"_s);
}

void TestModemCommands::refusedPinFailsOnce()
{
    m_modem->control.sendPin("1234", "");
    m_modem->reply("AT+CPIN=1234\r\r\n+CME ERROR: 16\r\n");
    m_modem->reply("\r\nERROR\r\nOK\r\n");
    QCOMPARE(m_modem->questions, QStringList{u"failed 3"_s});
    QVERIFY(!m_modem->terminal.contains(u"1234"));
    QVERIFY(!m_modem->terminal.contains(u"enviado correctamente"));
}

void TestModemCommands::lateEchoIsMaskedToo()
{
    m_modem->control.sendPin("1234", "");
    m_modem->reply("OK\r\nAT+CPIN=1234\r\n");
    QVERIFY(!m_modem->terminal.contains(u"1234"));
}

void TestModemCommands::signalLevelIsWritten_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("line");
    QTest::newRow("20") << QByteArray("20,0") << u"** Nivel de señal -73dBm [-113...-51]\r\n"_s;
    QTest::newRow("50 writes nothing") << QByteArray("50,0") << QString();
    QTest::newRow("99, no coverage")
        << QByteArray("99,99") << u"** El módem no tiene cobertura\r\n"_s;
}

void TestModemCommands::signalLevelIsWritten()
{
    QFETCH(QByteArray, value);
    QFETCH(QString, line);
    m_modem->control.querySignal();
    QCOMPARE(m_modem->link.state(), LinkState::SignalQuery);
    QCOMPARE(m_modem->takeCommand(), QByteArray("AT+CSQ\r\n"));
    QCOMPARE(m_modem->tmrTemporizador.interval(), 3000ms);
    m_modem->takeTerminal();
    const QByteArray reply = "AT+CSQ\r\r\n+CSQ: " + value + "\r\n\r\nOK\r\n";
    m_modem->modem.arriveBytewise(reply);
    const QString expected = line.isEmpty() ? QString() : u"\r\n"_s + line;
    QCOMPARE(m_modem->takeTerminal(), QString::fromLatin1(reply) + expected);
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
    QVERIFY(m_modem->questions.isEmpty());
}

void TestModemCommands::signalReplyIsGatheredOverPortions()
{
    m_modem->control.querySignal();
    m_modem->reply("\r\n+CSQ: 20,0\r\n\r\nOK\r");
    QCOMPARE(m_modem->link.state(), LinkState::SignalQuery);
    m_modem->reply("\n");
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemCommands::signalQueryWithErrorFails()
{
    m_modem->control.querySignal();
    m_modem->reply("\r\nERROR\r\n");
    QCOMPARE(m_modem->questions, QStringList{u"failed 5"_s});
}

void TestModemCommands::failureIsToldOnceAndTheCommandEndsWhenItIsAcknowledged()
{
    m_modem->control.checkPin();
    m_modem->takeTerminal();
    m_modem->reply("ERROR");
    m_modem->reply("\r\nERROR\r\n+CPIN: READY\r\n");
    QVERIFY(!m_modem->tmrTemporizador.fire());
    QCOMPARE(m_modem->questions, QStringList{u"failed 4"_s});
    QCOMPARE(m_modem->takeTerminal(), u"ERROR\r\nERROR\r\n+CPIN: READY\r\n"_s);
    QCOMPARE(m_modem->link.state(), LinkState::PinQuery);
    QVERIFY(!m_modem->controlsEnabled);
    m_modem->control.acknowledgeFailure();
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(m_modem->terminal.isEmpty());
}

void TestModemCommands::commandTakesBackWhatHasNotLeftYet()
{
    int clearsBeforeTheWrite = 0;
    m_modem->modem.afterWrite = [&] { clearsBeforeTheWrite = m_modem->modem.outputClears; };
    m_modem->control.type("A");
    QCOMPARE(clearsBeforeTheWrite, 1);
    m_modem->control.checkPin();
    QCOMPARE(clearsBeforeTheWrite, 2);
}

void TestModemCommands::commandInProgressKeepsOthersOut()
{
    m_modem->control.checkPin();
    m_modem->takeCommand();
    m_modem->control.querySignal();
    m_modem->control.sendPin("1234", "");
    m_modem->control.executeScript();
    m_modem->control.checkPin();
    QVERIFY(m_modem->takeCommand().isEmpty());
    QCOMPARE(m_modem->link.state(), LinkState::PinQuery);
}

void TestModemCommands::endlessReplyIsKeptWithinItsBound()
{
    m_modem->control.querySignal();
    m_modem->takeTerminal();
    for (int i = 0; i < 100; ++i)
        m_modem->reply(QByteArray(1000, 'x'));
    QCOMPARE(m_modem->takeTerminal().size(), 100000);
    QCOMPARE(m_modem->link.state(), LinkState::SignalQuery);
    QVERIFY(m_modem->tmrTemporizador.isRunning());
    // What lies further back than the bound is forgotten, what lies within it is not.
    m_modem->reply("+CSQ: 9,0" + QByteArray(5000, 'x') + "\r\nOK\r\n");
    QCOMPARE(m_modem->link.state(), LinkState::SignalQuery);
    m_modem->reply("+CSQ: 9,0" + QByteArray(3000, 'x') + "\r\nOK\r\n");
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemCommands::wordsOfAnIdleModemAreShown()
{
    QVERIFY(m_modem->control.ensureModemPort());
    m_modem->modem.setReceiveThreshold(1);
    m_modem->modem.arriveBytewise("\r\nRING\r\n");
    QCOMPARE(m_modem->terminal, u"\r\nRING\r\n"_s);
}

void TestModemCommands::typedCharacterIsSentAndShownOnce()
{
    for (const char character : QByteArrayView("AT\r"))
        m_modem->control.type(QByteArray(1, character));
    QCOMPARE(m_modem->modem.writes.size(), 3);
    QCOMPARE(m_modem->takeCommand(), QByteArray("AT\r"));
    QCOMPARE(m_modem->takeTerminal(), u"AT\r"_s);
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
    QVERIFY(m_modem->controlsEnabled);
    m_modem->reply("\r\nOK\r\n");
    QCOMPARE(m_modem->takeTerminal(), u"\r\nOK\r\n"_s);
}

void TestModemCommands::characterTypedWhileACommandRunsIsNotSent()
{
    m_modem->control.checkPin();
    m_modem->takeCommand();
    m_modem->control.type("A");
    QVERIFY(m_modem->takeCommand().isEmpty());
    QVERIFY(m_modem->tmrTemporizador.isRunning());
}

void TestModemCommands::characterTypedWhileARequestIsOutstandingIsNotSent()
{
    m_modem->link.ArrancaConexion(false);
    QByteArray body;
    qint32 timeout = 0;
    m_modem->link.Envia(1, body, timeout);
    m_modem->control.type("A");
    QVERIFY(m_modem->takeCommand().isEmpty());
    QVERIFY(!m_modem->modem.isOpen());
    QVERIFY(m_modem->link.Ocupado());
}

void TestModemCommands::characterTypedWithoutPortIsToldInTheTerminal()
{
    m_modem->modem.refusal = u"No existe"_s;
    m_modem->control.type("A");
    QCOMPARE(m_modem->terminal, u"\r\n** No se ha podido abrir el puerto serie\r\n"_s);
    QVERIFY(m_modem->takeCommand().isEmpty());
}

void TestModemCommands::codeTypedByHandIsMasked()
{
    for (const char character : QByteArrayView("AT+CPIN=1234\r"))
        m_modem->control.type(QByteArray(1, character));
    QCOMPARE(m_modem->takeCommand(), QByteArray("AT+CPIN=1234\r"));
    QCOMPARE(m_modem->takeTerminal(), u"AT+CPIN=****\r"_s);
}

void TestModemCommands::codeCorrectedWhileTypedByHandIsMasked()
{
    for (const char character : QByteArrayView("AT+CPN\bIN=1234\r"))
        m_modem->control.type(QByteArray(1, character));
    m_modem->reply("AT+CPN\b \bIN=1234\r\r\nOK\r\n");
    QCOMPARE(m_modem->takeTerminal(), u"AT+CPN\bIN=****\rAT+CPN\b \bIN=****\r\r\nOK\r\n"_s);
}

void TestModemCommands::halfTypedCodeMasksNothingAfterTheConnection()
{
    for (const char character : QByteArrayView("AT+CPIN=12"))
        m_modem->control.type(QByteArray(1, character));
    m_modem->reply("AT+CPIN=12");
    m_modem->link.RemataConexion();
    m_modem->takeTerminal();
    m_modem->control.querySignal();
    m_modem->reply("+CSQ: 20,0");
    QCOMPARE(m_modem->takeTerminal(), u"AT+CSQ\r\n+CSQ: 20,0"_s);
}

void TestModemCommands::modemFoundGoneInMidCommandFailsOnce()
{
    m_modem->modem.afterWrite = [&] { m_modem->modem.vanish(); };
    m_modem->control.checkPin();
    QTRY_COMPARE(m_modem->questions, QStringList{u"failed 4"_s});
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
}

void TestModemCommands::modemUnpluggedAndBackBeforeAnyoneLooksIsToldByTheTimeOut()
{
    m_modem->control.checkPin();
    m_modem->modem.vanish();
    m_modem->modem.open();
    QCoreApplication::processEvents();
    QVERIFY(m_modem->questions.isEmpty());
    QVERIFY(m_modem->tmrTemporizador.fire());
    QCOMPARE(m_modem->questions, QStringList{u"failed 4"_s});
}

void TestModemCommands::modemThatVanishesWithoutACommandIsNoFailure()
{
    m_modem->control.type("A");
    m_modem->modem.vanish();
    QCoreApplication::sendPostedEvents();
    QVERIFY(m_modem->questions.isEmpty());
}

void TestModemCommands::bytesOfAnAnswerAreLeftToTheLink()
{
    m_modem->control.checkPin();
    connect(
        &m_modem->link, &MessageLink::becameIdle, this,
        [this] {
            QByteArray body;
            qint32 timeout = 0;
            m_modem->link.Envia(1, body, timeout);
            m_modem->reply(QByteArray::fromHex("68040468010802"));
        },
        Qt::SingleShotConnection);
    m_modem->reply("+CPIN: READY\r\n");
    QCOMPARE(m_modem->link.state(), LinkState::Body);
    m_modem->reply(QByteArray::fromHex("000b16"));
    QVERIFY(!m_modem->link.Ocupado());
}

void TestModemCommands::endOfTheConnectionEnablesTheControls()
{
    m_modem->control.checkPin();
    m_modem->link.RemataConexion();
    QVERIFY(m_modem->controlsEnabled);
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
}

void TestModemCommands::acknowledgementAfterTheEndLeavesTheNextCommandAlone()
{
    m_modem->control.checkPin();
    m_modem->reply("ERROR");
    m_modem->link.RemataConexion();
    m_modem->control.querySignal();
    m_modem->control.acknowledgeFailure();
    QCOMPARE(m_modem->link.state(), LinkState::SignalQuery);
    QVERIFY(m_modem->tmrTemporizador.isRunning());
    QVERIFY(!m_modem->controlsEnabled);
    m_modem->reply("\r\n+CSQ: 9,0\r\nOK\r\n");
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemCommands::answerThatNobodyAwaitsIsIgnored()
{
    m_modem->control.checkPin();
    m_modem->takeCommand();
    m_modem->control.dial(u"986123456"_s);
    m_modem->control.runScript(u"none.mdm"_s);
    m_modem->control.acknowledgeBusy();
    m_modem->control.acknowledgeFailure();
    QCOMPARE(m_modem->link.state(), LinkState::PinQuery);
    QVERIFY(m_modem->takeCommand().isEmpty());
    QVERIFY(m_modem->questions.isEmpty());

    m_modem->reply("ERROR");
    m_modem->control.dial(u"986123456"_s);
    m_modem->control.acknowledgeBusy();
    QCOMPARE(m_modem->link.state(), LinkState::PinQuery);
    QVERIFY(m_modem->takeCommand().isEmpty());
}

void TestModemCommands::controlMayGoWhileItTellsOfAFailure()
{
    LinkFixture f;
    auto control = std::make_unique<ModemControl>(f.link, f.modem, f.settings);
    QObject::connect(control.get(), &ModemControl::failed, &f.link, [&] { control.reset(); });
    control->checkPin();
    f.modem.arrive("ERROR\r\n+CPIN: READY\r\n");
    QVERIFY(!control);
    QVERIFY(!f.tmrTemporizador.isEnabled());
}

QTEST_GUILESS_MAIN(TestModemCommands)
#include "TestModemCommands.moc"
