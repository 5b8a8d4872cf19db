#include "ModemFixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString number = u"986123456"_s;

// What the control asks.
QStringList theNumber() { return {u"number"_s}; }
QStringList initialisationFailed() { return {u"failed 2"_s}; }
QStringList callFailed() { return {u"number"_s, u"failed 6"_s}; }

} // namespace

class TestModemDialling : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void initialisationThenNumberThenConnect();
    void textsGoToTheModemInTheCodePage();
    void repliesSplitAtEveryByte();
    void emptyInitialisationDialsAtOnce();
    void emptyNumberEndsTheAttempt();
    void silentModemFailsAfterThreeSeconds();
    void errorInTheInitialisationFailsAtOnce();
    void errorInTheMiddleOfAReplyFails();
    void busyLineIsToldAndThenFails();
    void wholeCallMayBeAnsweredWithinTheSignals();
    void errorWhileDiallingFails();
    void callThatNobodyAnswersFailsAfterItsTime();
    void otherWordsKeepWaiting();
    void connectWithARateIsAConnection();
    void failureIsToldOnce();
    void attemptEndsWhenTheFailureIsAcknowledged();
    void secondOkWhileTheNumberIsAskedAsksOnce();
    void numberMayBeGivenLater();
    void modemWithoutPortIsNotSpokenTo();
    void vanishingModemEndsTheDialling();
    void modemThatVanishedWhileTheNumberWasAskedFails();
    void modemFoundGoneWhileTheNumberIsSentIsToldOnce();
    void secondConnectWhileDiallingStartsNoOther();
    void endOfTheConnectionWhileDiallingHangsUp();
    void endOfTheConnectionWhileTheNumberIsAskedDialsNothing();
    void endOfTheConnectionWhileTheBusyLineIsToldTellsNoFailure();
    void linkWorksOverTheCall();
    void modemThatVanishesInMidCallIsAClosedPort();

private:
    /// The modem is ready, and the number is given.
    void dial()
    {
        m_modem->reply("OK");
        m_modem->control.dial(number);
    }

    std::unique_ptr<ModemFixture> m_modem;
};

void TestModemDialling::init() { m_modem = std::make_unique<ModemFixture>(); }

void TestModemDialling::cleanup() { m_modem.reset(); }

void TestModemDialling::initialisationThenNumberThenConnect()
{
    m_modem->dialWith({
        [&] {
            QCOMPARE(m_modem->link.state(), LinkState::Initialisation);
            QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\n"));
            QCOMPARE(m_modem->tmrTemporizador.interval(), 3000ms);
            QVERIFY(!m_modem->controlsEnabled);
            m_modem->reply("\r\nOK");
            QVERIFY(!m_modem->tmrTemporizador.isEnabled());
            QCOMPARE(m_modem->questions, theNumber());
            m_modem->control.dial(number);
            m_modem->reply("\r\n");
        },
        [&] {
            QCOMPARE(m_modem->link.state(), LinkState::Dialling);
            QCOMPARE(m_modem->takeCommand(), QByteArray("ATD986123456\r\n"));
            // 64000 ms: two periods of 31232.
            QCOMPARE(m_modem->tmrTemporizador.interval(), 31232ms);
            m_modem->reply("\r\nCONNECT\r\n");
        },
    });
    QCOMPARE(m_modem->questions, theNumber());
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(m_modem->modem.isOpen());
    QCOMPARE(m_modem->terminal, u"ATZ\r\n\r\nOKATD986123456\r\n\r\n\r\nCONNECT\r\n"
                                "** Conexión establecida\r\n\r\n"_s);
}

void TestModemDialling::textsGoToTheModemInTheCodePage()
{
    m_modem->settings.modemInitialisation = u"AT€"_s;
    m_modem->dialWith({
        [&] {
            m_modem->reply("OK");
            m_modem->control.dial(u"9€"_s);
        },
        [&] { m_modem->reply("CONNECT"); },
    });
    QCOMPARE(m_modem->takeCommand(), QByteArray("AT\x80\r\nATD9\x80\r\n"));
}

void TestModemDialling::repliesSplitAtEveryByte()
{
    m_modem->dialWith({
        [&] {
            m_modem->modem.arriveBytewise("ATZ\r\r\nOK");
            m_modem->control.dial(number);
            m_modem->modem.arriveBytewise("\r\n");
        },
        [&] { m_modem->modem.arriveBytewise("ATD986123456\r\r\nCONNECT 9600\r\n"); },
    });
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\nATD986123456\r\n"));
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(m_modem->terminal.contains(u"** Conexión establecida\r\n"));
}

void TestModemDialling::emptyInitialisationDialsAtOnce()
{
    m_modem->settings.modemInitialisation.clear();
    m_modem->dialWith({
        [&] {
            QVERIFY(m_modem->takeCommand().isEmpty());
            QCOMPARE(m_modem->link.state(), LinkState::Initialisation);
            QVERIFY(!m_modem->controlsEnabled);
            m_modem->control.dial(number);
            QCOMPARE(m_modem->takeCommand(), QByteArray("ATD986123456\r\n"));
            m_modem->reply("CONNECT");
        },
    });
    QCOMPARE(m_modem->questions, theNumber());
    QVERIFY(m_modem->terminal.contains(u"** Conexión establecida"));
}

void TestModemDialling::emptyNumberEndsTheAttempt()
{
    m_modem->dialWith({[&] {
        m_modem->reply("OK");
        m_modem->control.dial(QString());
    }});
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\n"));
    QCOMPARE(m_modem->questions, theNumber());
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
    QVERIFY(!m_modem->link.isStarting());
    // The port stays open: the identification that follows ends the connection.
    QVERIFY(m_modem->modem.isOpen());
}

void TestModemDialling::silentModemFailsAfterThreeSeconds()
{
    m_modem->dialWith({[&] {
        QVERIFY(m_modem->tmrTemporizador.fire());
        QCOMPARE(m_modem->questions, initialisationFailed());
        m_modem->control.acknowledgeFailure();
    }});
    QVERIFY(m_modem->controlsEnabled);
    QCOMPARE(m_modem->questions, initialisationFailed());
}

void TestModemDialling::errorInTheInitialisationFailsAtOnce()
{
    m_modem->dialWith({[&] {
        m_modem->reply("\r\nERROR\r\n");
        QVERIFY(!m_modem->tmrTemporizador.isEnabled());
        m_modem->control.acknowledgeFailure();
    }});
    QCOMPARE(m_modem->questions, initialisationFailed());
}

void TestModemDialling::errorInTheMiddleOfAReplyFails()
{
    m_modem->dialWith({[&] {
        m_modem->reply("xxERRORxx\r\nOK\r\n");
        m_modem->control.acknowledgeFailure();
    }});
    QCOMPARE(m_modem->questions, initialisationFailed());
}

void TestModemDialling::busyLineIsToldAndThenFails()
{
    m_modem->dialWith({
        [&] { dial(); },
        [&] {
            m_modem->reply("\r\nBUSY\r\n");
            QCOMPARE(m_modem->questions, (QStringList{u"number"_s, u"busy"_s}));
            QVERIFY(!m_modem->tmrTemporizador.isEnabled());
            m_modem->reply("CONNECT ERROR BUSY");
            m_modem->control.acknowledgeFailure();
            QCOMPARE(m_modem->questions, (QStringList{u"number"_s, u"busy"_s}));
            m_modem->control.acknowledgeBusy();
            QCOMPARE(m_modem->link.state(), LinkState::Dialling);
            m_modem->control.acknowledgeFailure();
        },
    });
    QCOMPARE(m_modem->questions, (QStringList{u"number"_s, u"busy"_s, u"failed 6"_s}));
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemDialling::wholeCallMayBeAnsweredWithinTheSignals()
{
    ModemControl& control = m_modem->control;
    QObject::connect(&control, &ModemControl::numberWanted, &control,
                     [&] { control.dial(number); });
    QObject::connect(&control, &ModemControl::lineFoundBusy, &control,
                     &ModemControl::acknowledgeBusy);
    QObject::connect(&control, &ModemControl::failed, &control, &ModemControl::acknowledgeFailure);
    m_modem->dialWith({
        [&] { m_modem->reply("OK"); },
        [&] { m_modem->reply("BUSY"); },
    });
    QCOMPARE(m_modem->questions, (QStringList{u"number"_s, u"busy"_s, u"failed 6"_s}));
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\nATD986123456\r\n"));
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(m_modem->controlsEnabled);
}

void TestModemDialling::errorWhileDiallingFails()
{
    m_modem->dialWith({
        [&] { dial(); },
        [&] {
            m_modem->reply("ERROR");
            m_modem->control.acknowledgeFailure();
        },
    });
    QCOMPARE(m_modem->questions, callFailed());
}

void TestModemDialling::callThatNobodyAnswersFailsAfterItsTime()
{
    m_modem->dialWith({
        [&] { dial(); },
        [&] {
            QVERIFY(m_modem->tmrTemporizador.fire());
            QCOMPARE(m_modem->questions, theNumber());
        },
        [&] {
            QVERIFY(m_modem->tmrTemporizador.fire());
            m_modem->control.acknowledgeFailure();
        },
    });
    QCOMPARE(m_modem->questions, callFailed());
}

void TestModemDialling::otherWordsKeepWaiting()
{
    m_modem->dialWith({
        [&] { m_modem->reply("\r\nok\r\n"); },
        [&] {
            QCOMPARE(m_modem->link.state(), LinkState::Initialisation);
            dial();
        },
        [&] { m_modem->reply("\r\nRINGING\r\nNO CARRIER\r\nconnect"); },
        [&] {
            QCOMPARE(m_modem->link.state(), LinkState::Dialling);
            QVERIFY(m_modem->tmrTemporizador.isRunning());
            m_modem->reply("CONNECT");
        },
    });
    QCOMPARE(m_modem->questions, theNumber());
}

void TestModemDialling::connectWithARateIsAConnection()
{
    m_modem->dialWith({
        [&] { dial(); },
        [&] { m_modem->reply("\r\nCONNECT 9600\r\n"); },
    });
    QVERIFY(m_modem->terminal.endsWith(u"** Conexión establecida\r\n 9600\r\n"_s));
}

void TestModemDialling::failureIsToldOnce()
{
    m_modem->dialWith({[&] {
        m_modem->reply("\r\nERROR\r\n");
        m_modem->reply("\r\nERROR\r\nBUSY\r\nOK\r\n");
        QVERIFY(!m_modem->tmrTemporizador.fire());
        m_modem->control.acknowledgeFailure();
    }});
    QCOMPARE(m_modem->questions, initialisationFailed());
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemDialling::attemptEndsWhenTheFailureIsAcknowledged()
{
    m_modem->dialWith({
        [&] { m_modem->reply("ERROR"); },
        [&] {
            QVERIFY(m_modem->link.isStarting());
            QVERIFY(!m_modem->controlsEnabled);
            m_modem->control.acknowledgeFailure();
        },
    });
    QVERIFY(!m_modem->link.isStarting());
    QVERIFY(m_modem->controlsEnabled);
}

void TestModemDialling::secondOkWhileTheNumberIsAskedAsksOnce()
{
    m_modem->dialWith({
        [&] {
            m_modem->reply("\r\nOK\r\n");
            m_modem->reply("\r\nOK\r\n");
            m_modem->control.dial(number);
        },
        [&] { m_modem->reply("CONNECT"); },
    });
    QCOMPARE(m_modem->questions, theNumber());
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\nATD986123456\r\n"));
}

void TestModemDialling::numberMayBeGivenLater()
{
    m_modem->dialWith({
        [&] { m_modem->reply("OK"); },
        [&] { m_modem->reply("\r\nERROR\r\n"); },
        [&] {
            QVERIFY(m_modem->link.isStarting());
            m_modem->control.dial(number);
            m_modem->control.dial(u"1"_s);
        },
        [&] { m_modem->reply("CONNECT"); },
    });
    QCOMPARE(m_modem->questions, theNumber());
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\nATD986123456\r\n"));
}

void TestModemDialling::modemWithoutPortIsNotSpokenTo()
{
    m_modem->modem.refusal = u"No existe"_s;
    m_modem->link.ArrancaConexion(true);
    QVERIFY(m_modem->takeCommand().isEmpty());
    QVERIFY(m_modem->questions.isEmpty());
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemDialling::vanishingModemEndsTheDialling()
{
    QObject::connect(&m_modem->control, &ModemControl::failed, &m_modem->control,
                     &ModemControl::acknowledgeFailure);
    m_modem->dialWith({
        [&] { dial(); },
        [&] { m_modem->modem.vanish(); },
    });
    QCOMPARE(m_modem->questions, callFailed());
    QVERIFY(!m_modem->modem.isOpen());
}

void TestModemDialling::modemThatVanishedWhileTheNumberWasAskedFails()
{
    m_modem->dialWith({
        [&] {
            m_modem->reply("OK");
            m_modem->modem.vanish();
            QCoreApplication::sendPostedEvents();
            QCOMPARE(m_modem->questions, theNumber());
            m_modem->control.dial(number);
            QCOMPARE(m_modem->questions, callFailed());
            m_modem->control.acknowledgeFailure();
        },
    });
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemDialling::modemFoundGoneWhileTheNumberIsSentIsToldOnce()
{
    m_modem->dialWith({
        [&] {
            m_modem->modem.afterWrite = [&] { m_modem->modem.vanish(); };
            dial();
            QCoreApplication::sendPostedEvents();
            m_modem->control.acknowledgeFailure();
        },
    });
    QCOMPARE(m_modem->questions, callFailed());
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
}

void TestModemDialling::secondConnectWhileDiallingStartsNoOther()
{
    m_modem->dialWith({
        [&] {
            QVERIFY(m_modem->link.isStarting());
            m_modem->takeCommand();
            m_modem->link.ArrancaConexion(true);
            QVERIFY(m_modem->takeCommand().isEmpty());
            dial();
        },
        [&] {
            m_modem->link.ArrancaConexion(true);
            m_modem->reply("CONNECT");
        },
    });
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATD986123456\r\n"));
    QCOMPARE(m_modem->questions, theNumber());
}

void TestModemDialling::endOfTheConnectionWhileDiallingHangsUp()
{
    m_modem->dialWith({
        [&] { dial(); },
        [&] {
            m_modem->modem.lineChanges.clear();
            m_modem->link.RemataConexion();
        },
    });
    QCOMPARE(m_modem->modem.lineChanges, (QList<QByteArray>{"DTR=0 RTS=0", "DTR=1 RTS=0"}));
    QVERIFY(!m_modem->modem.isOpen());
    QCOMPARE(m_modem->questions, theNumber());
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
}

void TestModemDialling::endOfTheConnectionWhileTheNumberIsAskedDialsNothing()
{
    m_modem->dialWith({[&] {
        m_modem->reply("OK\r\n");
        m_modem->link.RemataConexion();
        m_modem->control.dial(number);
    }});
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\n"));
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(!m_modem->modem.isOpen());
    QCOMPARE(m_modem->questions, theNumber());
}

void TestModemDialling::endOfTheConnectionWhileTheBusyLineIsToldTellsNoFailure()
{
    m_modem->dialWith({
        [&] { dial(); },
        [&] {
            m_modem->reply("BUSY\r\n");
            m_modem->link.RemataConexion();
            m_modem->control.acknowledgeBusy();
        },
    });
    QCOMPARE(m_modem->questions, (QStringList{u"number"_s, u"busy"_s}));
}

void TestModemDialling::linkWorksOverTheCall()
{
    m_modem->dialWith({
        [&] { dial(); },
        [&] { m_modem->reply("CONNECT 9600\r\n"); },
    });
    m_modem->takeCommand();
    QByteArray body = QByteArray::fromHex("0201");
    qint32 timeout = 0;
    m_modem->link.Envia(1, body, timeout);
    QCOMPARE(timeout, 4600);
    QCOMPARE(m_modem->takeCommand(), QByteArray::fromHex("68040468010102010516"));
    m_modem->modem.arrive(QByteArray::fromHex("68040468010802000b16"));
    QVERIFY(!m_modem->link.Ocupado());
}

void TestModemDialling::modemThatVanishesInMidCallIsAClosedPort()
{
    m_modem->dialWith({
        [&] { dial(); },
        [&] { m_modem->reply("CONNECT"); },
    });
    m_modem->modem.vanish();
    m_modem->takeCommand();
    QByteArray body = QByteArray::fromHex("0201");
    qint32 timeout = 0;
    m_modem->link.Envia(1, body, timeout);
    QVERIFY(!m_modem->link.Ocupado());
    QVERIFY(m_modem->takeCommand().isEmpty());
    QCOMPARE(m_modem->questions, theNumber());
}

QTEST_GUILESS_MAIN(TestModemDialling)
#include "TestModemDialling.moc"
