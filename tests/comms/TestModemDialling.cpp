#include "ModemFixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString callFailed = u"La llamada ha fallado. Compruebe que los parámetros de\r\n"
                           "configuración son correctos, que el módem está inicializado\r\n"
                           "correctamente, e inténtelo de nuevo"_s;
const QString noAnswer = u"El módem no responde. Revise las conexiones \r\ny la configuración"_s;

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
    void cancelledNumberEndsTheAttempt_data();
    void cancelledNumberEndsTheAttempt();
    void silentModemFailsAfterThreeSeconds();
    void errorInTheInitialisationFailsAtOnce();
    void errorInTheMiddleOfAReplyFails();
    void busyLineShowsBothBoxesInOrder();
    void errorWhileDiallingFails();
    void callThatNobodyAnswersFailsAfterItsTime();
    void otherWordsKeepWaiting();
    void connectWithARateIsAConnection();
    void oneFailureShowsOneBox();
    void secondOkWhileTheNumberIsAskedAsksOnce();
    void modemWithoutPortIsNotSpokenTo();
    void vanishingModemEndsTheDialling();
    void modemThatVanishedWhileTheNumberWasAskedFails();
    void modemFoundGoneWhileTheNumberIsSentShowsOneBox();
    void secondConnectWhileDiallingStartsNoOther();
    void endOfTheConnectionWhileDiallingHangsUp();
    void endOfTheConnectionWhileTheNumberIsAskedDialsNothing();
    void endOfTheConnectionUnderTheBusyBoxShowsNoFurtherBox();
    void linkWorksOverTheCall();
    void modemThatVanishesInMidCallIsAClosedPort();

private:
    std::unique_ptr<ModemFixture> m_modem;
};

void TestModemDialling::init()
{
    m_modem = std::make_unique<ModemFixture>();
    m_modem->dialogs.texts = {u"986123456"_s};
}

void TestModemDialling::cleanup() { m_modem.reset(); }

void TestModemDialling::initialisationThenNumberThenConnect()
{
    m_modem->dialWith({
        [&] {
            QCOMPARE(m_modem->link.state(), LinkState::Initialisation);
            QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\n"));
            QCOMPARE(m_modem->tmrTemporizador.interval(), 3000ms);
            QVERIFY(!m_modem->controlsEnabled);
            m_modem->reply("\r\nOK\r\n");
        },
        [&] {
            QCOMPARE(m_modem->link.state(), LinkState::Dialling);
            QCOMPARE(m_modem->takeCommand(), QByteArray("ATD986123456\r\n"));
            // 64000 ms: two periods of 31232.
            QCOMPARE(m_modem->tmrTemporizador.interval(), 31232ms);
            m_modem->reply("\r\nCONNECT\r\n");
        },
    });
    QCOMPARE(m_modem->dialogs.prompts,
             QStringList{u"Introducción de datos|Escriba el número de teléfono"_s});
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(m_modem->dialogs.boxes.isEmpty());
    QVERIFY(m_modem->modem.isOpen());
    QCOMPARE(m_modem->terminal, u"ATZ\r\n\r\nOKATD986123456\r\n\r\n\r\nCONNECT\r\n"
                                "** Conexión establecida\r\n\r\n"_s);
}

void TestModemDialling::textsGoToTheModemInTheCodePage()
{
    m_modem->settings.modemInitialisation = u"AT€"_s;
    m_modem->dialogs.texts = {u"9€"_s};
    m_modem->dialWith({
        [&] { m_modem->reply("OK"); },
        [&] { m_modem->reply("CONNECT"); },
    });
    QCOMPARE(m_modem->takeCommand(), QByteArray("AT\x80\r\nATD9\x80\r\n"));
}

void TestModemDialling::repliesSplitAtEveryByte()
{
    m_modem->dialWith({
        [&] { m_modem->modem.arriveBytewise("ATZ\r\r\nOK\r\n"); },
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
            QCOMPARE(m_modem->takeCommand(), QByteArray("ATD986123456\r\n"));
            m_modem->reply("CONNECT");
        },
    });
    QCOMPARE(m_modem->dialogs.prompts.size(), 1);
    QVERIFY(m_modem->terminal.contains(u"** Conexión establecida"));
}

void TestModemDialling::cancelledNumberEndsTheAttempt_data()
{
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("Cancel") << true;
    QTest::newRow("empty") << false;
}

void TestModemDialling::cancelledNumberEndsTheAttempt()
{
    QFETCH(bool, cancelled);
    m_modem->dialogs.texts = {cancelled ? std::nullopt : std::optional(QString())};
    m_modem->dialWith({[&] { m_modem->reply("OK"); }});
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\n"));
    QVERIFY(m_modem->dialogs.boxes.isEmpty());
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
    QVERIFY(!m_modem->link.isStarting());
    // The port stays open: the identification that follows ends the connection.
    QVERIFY(m_modem->modem.isOpen());
}

void TestModemDialling::silentModemFailsAfterThreeSeconds()
{
    m_modem->dialWith({[&] { QVERIFY(m_modem->tmrTemporizador.fire()); }});
    QCOMPARE(m_modem->dialogs.boxes.size(), 1);
    QCOMPARE(m_modem->dialogs.boxes.first().icon, Dialogs::Icon::Critical);
    QCOMPARE(m_modem->dialogs.boxes.first().title, u"Error"_s);
    QCOMPARE(m_modem->dialogs.boxes.first().text, noAnswer);
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(m_modem->dialogs.prompts.isEmpty());
}

void TestModemDialling::errorInTheInitialisationFailsAtOnce()
{
    m_modem->dialWith({[&] { m_modem->reply("\r\nERROR\r\n"); }});
    QCOMPARE(m_modem->dialogs.boxes.size(), 1);
    QCOMPARE(m_modem->dialogs.boxes.first().text, noAnswer);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
}

void TestModemDialling::errorInTheMiddleOfAReplyFails()
{
    m_modem->dialWith({[&] { m_modem->reply("xxERRORxx\r\nOK\r\n"); }});
    QCOMPARE(m_modem->dialogs.boxes.size(), 1);
    QVERIFY(m_modem->dialogs.prompts.isEmpty());
}

void TestModemDialling::busyLineShowsBothBoxesInOrder()
{
    m_modem->dialWith({
        [&] { m_modem->reply("OK"); },
        [&] { m_modem->reply("\r\nBUSY\r\n"); },
    });
    QCOMPARE(m_modem->dialogs.boxes.size(), 2);
    QCOMPARE(m_modem->dialogs.boxes.at(0).icon, Dialogs::Icon::Warning);
    QCOMPARE(m_modem->dialogs.boxes.at(0).title, u"Aviso"_s);
    QCOMPARE(m_modem->dialogs.boxes.at(0).text,
             u"El módem con el que se intenta contactar está comunicando.\r\n"
             "Asegúrese de que el número es correcto"_s);
    QCOMPARE(m_modem->dialogs.boxes.at(1).icon, Dialogs::Icon::Critical);
    QCOMPARE(m_modem->dialogs.boxes.at(1).title, u"Error"_s);
    QCOMPARE(m_modem->dialogs.boxes.at(1).text, callFailed);
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemDialling::errorWhileDiallingFails()
{
    m_modem->dialWith({
        [&] { m_modem->reply("OK"); },
        [&] { m_modem->reply("ERROR"); },
    });
    QCOMPARE(m_modem->dialogs.boxes.size(), 1);
    QCOMPARE(m_modem->dialogs.boxes.first().text, callFailed);
}

void TestModemDialling::callThatNobodyAnswersFailsAfterItsTime()
{
    m_modem->dialWith({
        [&] { m_modem->reply("OK"); },
        [&] {
            QVERIFY(m_modem->tmrTemporizador.fire());
            QVERIFY(m_modem->dialogs.boxes.isEmpty());
        },
        [&] { QVERIFY(m_modem->tmrTemporizador.fire()); },
    });
    QCOMPARE(m_modem->dialogs.boxes.size(), 1);
    QCOMPARE(m_modem->dialogs.boxes.first().text, callFailed);
}

void TestModemDialling::otherWordsKeepWaiting()
{
    m_modem->dialWith({
        [&] { m_modem->reply("\r\nok\r\n"); },
        [&] {
            QCOMPARE(m_modem->link.state(), LinkState::Initialisation);
            m_modem->reply("OK");
        },
        [&] { m_modem->reply("\r\nRINGING\r\nNO CARRIER\r\nconnect"); },
        [&] {
            QCOMPARE(m_modem->link.state(), LinkState::Dialling);
            QVERIFY(m_modem->tmrTemporizador.isRunning());
            m_modem->reply("CONNECT");
        },
    });
    QVERIFY(m_modem->dialogs.boxes.isEmpty());
}

void TestModemDialling::connectWithARateIsAConnection()
{
    m_modem->dialWith({
        [&] { m_modem->reply("OK"); },
        [&] { m_modem->reply("\r\nCONNECT 9600\r\n"); },
    });
    QVERIFY(m_modem->terminal.endsWith(u"** Conexión establecida\r\n 9600\r\n"_s));
}

void TestModemDialling::oneFailureShowsOneBox()
{
    m_modem->dialogs.whileUp = [&] {
        m_modem->reply("\r\nERROR\r\nBUSY\r\nOK\r\n");
        QVERIFY(!m_modem->tmrTemporizador.fire());
    };
    m_modem->dialWith({[&] { m_modem->reply("\r\nERROR\r\n"); }});
    QCOMPARE(m_modem->dialogs.boxes.size(), 1);
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(m_modem->dialogs.prompts.isEmpty());
}

void TestModemDialling::secondOkWhileTheNumberIsAskedAsksOnce()
{
    m_modem->dialogs.whileUp = [&] { m_modem->reply("\r\nOK\r\n"); };
    m_modem->dialWith({
        [&] { m_modem->reply("\r\nOK\r\n"); },
        [&] { m_modem->reply("CONNECT"); },
    });
    QCOMPARE(m_modem->dialogs.prompts.size(), 1);
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\nATD986123456\r\n"));
}

void TestModemDialling::modemWithoutPortIsNotSpokenTo()
{
    m_modem->modem.refusal = u"No existe"_s;
    m_modem->link.ArrancaConexion(true);
    QVERIFY(m_modem->takeCommand().isEmpty());
    QVERIFY(m_modem->dialogs.boxes.isEmpty());
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemDialling::vanishingModemEndsTheDialling()
{
    m_modem->dialWith({
        [&] { m_modem->reply("OK"); },
        [&] { m_modem->modem.vanish(); },
    });
    QCOMPARE(m_modem->dialogs.boxes.size(), 1);
    QCOMPARE(m_modem->dialogs.boxes.first().text, callFailed);
    QVERIFY(!m_modem->modem.isOpen());
}

void TestModemDialling::modemThatVanishedWhileTheNumberWasAskedFails()
{
    m_modem->dialogs.whileUp = [&] { m_modem->modem.vanish(); };
    m_modem->dialWith({[&] { m_modem->reply("OK"); }});
    QCOMPARE(m_modem->dialogs.boxes.size(), 1);
    QCOMPARE(m_modem->dialogs.boxes.first().text, callFailed);
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemDialling::modemFoundGoneWhileTheNumberIsSentShowsOneBox()
{
    m_modem->dialWith({[&] {
        m_modem->modem.afterWrite = [&] { m_modem->modem.vanish(); };
        m_modem->reply("OK");
    }});
    QCoreApplication::processEvents();
    QCOMPARE(m_modem->dialogs.boxes.size(), 1);
    QCOMPARE(m_modem->dialogs.boxes.first().text, callFailed);
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
            m_modem->reply("OK");
        },
        [&] {
            m_modem->link.ArrancaConexion(true);
            m_modem->reply("CONNECT");
        },
    });
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATD986123456\r\n"));
    QCOMPARE(m_modem->dialogs.prompts.size(), 1);
}

void TestModemDialling::endOfTheConnectionWhileDiallingHangsUp()
{
    m_modem->dialWith({
        [&] { m_modem->reply("OK"); },
        [&] {
            m_modem->modem.lineChanges.clear();
            m_modem->link.RemataConexion();
        },
    });
    QCOMPARE(m_modem->modem.lineChanges, (QList<QByteArray>{"DTR=0 RTS=0", "DTR=1 RTS=0"}));
    QVERIFY(!m_modem->modem.isOpen());
    QVERIFY(m_modem->dialogs.boxes.isEmpty());
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
}

void TestModemDialling::endOfTheConnectionWhileTheNumberIsAskedDialsNothing()
{
    m_modem->dialogs.whileUp = [&] { m_modem->link.RemataConexion(); };
    m_modem->dialWith({[&] { m_modem->reply("OK\r\n"); }});
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\n"));
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(!m_modem->modem.isOpen());
    QVERIFY(m_modem->dialogs.boxes.isEmpty());
}

void TestModemDialling::endOfTheConnectionUnderTheBusyBoxShowsNoFurtherBox()
{
    m_modem->dialWith({
        [&] {
            m_modem->reply("OK");
            m_modem->dialogs.whileUp = [&] { m_modem->link.RemataConexion(); };
        },
        [&] { m_modem->reply("BUSY\r\n"); },
    });
    QCOMPARE(m_modem->dialogs.boxes.size(), 1);
    QCOMPARE(m_modem->dialogs.boxes.first().title, u"Aviso"_s);
}

void TestModemDialling::linkWorksOverTheCall()
{
    m_modem->dialWith({
        [&] { m_modem->reply("OK"); },
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
        [&] { m_modem->reply("OK"); },
        [&] { m_modem->reply("CONNECT"); },
    });
    m_modem->modem.vanish();
    m_modem->takeCommand();
    QByteArray body = QByteArray::fromHex("0201");
    qint32 timeout = 0;
    m_modem->link.Envia(1, body, timeout);
    QVERIFY(!m_modem->link.Ocupado());
    QVERIFY(m_modem->takeCommand().isEmpty());
    QVERIFY(m_modem->dialogs.boxes.isEmpty());
}

QTEST_GUILESS_MAIN(TestModemDialling)
#include "TestModemDialling.moc"
