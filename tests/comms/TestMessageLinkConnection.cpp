#include "Answer.h"
#include "Exchange.h"
#include "LinkFixture.h"
#include "ModemDialogue.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A dialogue that begins to dial and leaves the rest to the test.
class IdleDialogue : public ModemDialogue {
public:
    explicit IdleDialogue(MessageLink& link) : m_link(link) {}

    void start() override
    {
        ++starts;
        m_link.enterModemPhase(LinkState::Dialling);
        m_link.armTimer(64s);
    }
    void received(SerialPort& port) override
    {
        port.setReadLength(0);
        heard += port.read();
    }
    void timedOut() override
    {
        ++timeOuts;
        m_link.leaveModemPhase();
    }
    void ended() override { ++ends; }

    int starts = 0;
    int timeOuts = 0;
    int ends = 0;
    QByteArray heard;

private:
    MessageLink& m_link;
};

} // namespace

class TestMessageLinkConnection : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void startingOpensTheDirectPortAndShowsIt();
    void portDescriptionIsInUpperCase();
    void failedOpeningIsShownWithItsReason();
    void reasonOfAFailedOpeningCanBeReadAfterTheEnd();
    void lossOfThePortCanBeReadAfterTheEnd();
    void reasonIsForgottenWhenThePortOpensAgain();
    void startingAgainLeavesTheOpenPortOpen();
    void startingClosesTheOtherPort();
    void startingOverAPendingRequestForgetsIt();
    void endingClosesTheDirectPort();
    void endingHangsUpTheModemByDroppingDtr();
    void endingClearsTheBusyFlagAndTheBoundExchange();
    void endingStopsTheTimer();
    void endingShowsAnEmptyPort();
    void endIsToldOnceAConnection();

    void settingsReachBothPorts();
    void settingsReopenThePortInUse();
    void settingsLeaveClosedPortsClosed();
    void unlistedSpeedIsStillApplied();

    void diallingWaitsUntilTheLinkIsIdle();
    void secondStartWhileDiallingDoesNothing();
    void endingWhileDiallingReturnsToTheCaller();
    void endOfTheProgramWhileDiallingHangsUp();
    void portThatCannotBeOpenedIsNotDialled();
    void modemPhaseTimeOutGoesToTheDialogue();
    void modemsWordsGoToTheDialogueWhileIdle();
    void borrowedModemPortIsGivenBack();
    void connectingThroughTheModemForgetsTheBorrowing();
    void modemPhaseForgetsAPendingRequest();

private:
    std::unique_ptr<LinkFixture> m_fixture;
    QStringList m_shown;
};

void TestMessageLinkConnection::init()
{
    m_fixture = std::make_unique<LinkFixture>();
    m_shown.clear();
    connect(
        &m_fixture->link, &MessageLink::VisualizaPorto, this,
        [this](const QString& text, const QString& toolTip) { m_shown << text + u'|' + toolTip; });
}

void TestMessageLinkConnection::cleanup() { m_fixture.reset(); }

void TestMessageLinkConnection::startingOpensTheDirectPortAndShowsIt()
{
    m_fixture->link.ArrancaConexion(false);
    QVERIFY(m_fixture->serie.isOpen());
    QVERIFY(!m_fixture->modem.isOpen());
    QCOMPARE(m_shown, QStringList{u"COM1,9600,N,8,1|/dev/fake"_s});
}

void TestMessageLinkConnection::portDescriptionIsInUpperCase()
{
    m_fixture->settings.directSpeed = u"rápida"_s;
    m_fixture->settings.directPort = u"6"_s;
    m_fixture->link.ApplySettings();
    m_fixture->link.ArrancaConexion(false);
    QCOMPARE(m_shown, QStringList{u"COM7,RÁPIDA,N,8,1|/dev/fake"_s});
}

void TestMessageLinkConnection::failedOpeningIsShownWithItsReason()
{
    m_fixture->serie.refusal = u"Permiso denegado"_s;
    m_fixture->link.ArrancaConexion(false);
    QVERIFY(!m_fixture->serie.isOpen());
    QCOMPARE(m_shown, QStringList{u"COM1,9600,N,8,1|Permiso denegado"_s});
}

void TestMessageLinkConnection::reasonOfAFailedOpeningCanBeReadAfterTheEnd()
{
    m_fixture->serie.refusal = u"Permiso denegado"_s;
    m_fixture->link.ArrancaConexion(false);
    m_fixture->link.RemataConexion();
    QCOMPARE(m_shown.last(), u"|Permiso denegado"_s);
}

void TestMessageLinkConnection::lossOfThePortCanBeReadAfterTheEnd()
{
    m_fixture->link.ArrancaConexion(false);
    m_fixture->serie.vanish();
    m_fixture->link.RemataConexion();
    QCOMPARE(m_shown.last(), u"|Se ha perdido el puerto /dev/fake"_s);
}

void TestMessageLinkConnection::reasonIsForgottenWhenThePortOpensAgain()
{
    m_fixture->serie.refusal = u"Permiso denegado"_s;
    m_fixture->link.ArrancaConexion(false);
    m_fixture->serie.refusal.clear();
    m_fixture->link.ArrancaConexion(false);
    m_fixture->link.RemataConexion();
    QCOMPARE(m_shown.last(), u"|"_s);
}

void TestMessageLinkConnection::startingAgainLeavesTheOpenPortOpen()
{
    m_fixture->link.ArrancaConexion(false);
    m_fixture->link.ArrancaConexion(false);
    QCOMPARE(m_fixture->serie.timesOpened, 1);
    QCOMPARE(m_shown.size(), 2);
}

void TestMessageLinkConnection::startingClosesTheOtherPort()
{
    m_fixture->link.ArrancaConexion(true);
    QVERIFY(m_fixture->modem.isOpen());
    m_fixture->link.ArrancaConexion(false);
    QVERIFY(!m_fixture->modem.isOpen());
    QVERIFY(m_fixture->serie.isOpen());
    m_fixture->link.ArrancaConexion(true);
    QVERIFY(m_fixture->modem.isOpen());
    QVERIFY(!m_fixture->serie.isOpen());
}

void TestMessageLinkConnection::startingOverAPendingRequestForgetsIt()
{
    m_fixture->link.ArrancaConexion(false);
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(1, body, timeout);
    m_fixture->link.ArrancaConexion(false);
    QVERIFY(!m_fixture->link.Ocupado());
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
    QCOMPARE(m_fixture->link.state(), LinkState::Idle);
}

void TestMessageLinkConnection::endingClosesTheDirectPort()
{
    m_fixture->link.ArrancaConexion(false);
    m_fixture->link.RemataConexion();
    QVERIFY(!m_fixture->serie.isOpen());
    QCOMPARE(m_fixture->modem.timesClosed, 0);
}

void TestMessageLinkConnection::endingHangsUpTheModemByDroppingDtr()
{
    m_fixture->link.ArrancaConexion(true);
    m_fixture->modem.lineChanges.clear();
    m_fixture->link.RemataConexion();
    QCOMPARE(m_fixture->modem.lineChanges, (QList<QByteArray>{"DTR=0 RTS=0", "DTR=1 RTS=0"}));
    QVERIFY(!m_fixture->modem.isOpen());
}

void TestMessageLinkConnection::endingClearsTheBusyFlagAndTheBoundExchange()
{
    m_fixture->link.ArrancaConexion(false);
    Exchange exchange;
    exchange.bind(m_fixture->link, isAnyAnswer,
                  [](quint8, const QByteArray&, LinkStatus) { QFAIL("left over"); });
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(5, body, timeout);
    m_fixture->link.RemataConexion();
    QVERIFY(!m_fixture->link.Ocupado());
    QVERIFY(!exchange.isBound());
    m_fixture->link.ArrancaConexion(false);
    m_fixture->link.Envia(5, body, timeout);
    m_fixture->serie.arrive(QByteArray::fromHex("6802026801080916"));
    QVERIFY(!m_fixture->link.Ocupado());
}

void TestMessageLinkConnection::endingStopsTheTimer()
{
    m_fixture->link.ArrancaConexion(false);
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(5, body, timeout);
    QVERIFY(m_fixture->tmrTemporizador.isRunning());
    m_fixture->link.RemataConexion();
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
}

void TestMessageLinkConnection::endingShowsAnEmptyPort()
{
    m_fixture->link.RemataConexion();
    QCOMPARE(m_shown, QStringList{u"|"_s});
}

void TestMessageLinkConnection::endIsToldOnceAConnection()
{
    MessageLink& link = m_fixture->link;
    const QSignalSpy ended(&link, &MessageLink::connectionEnded);
    link.RemataConexion();
    QCOMPARE(ended.count(), 0);
    QVERIFY(!link.isConnected());
    link.ArrancaConexion(false);
    QVERIFY(link.isConnected());
    m_fixture->serie.close();
    QVERIFY(link.isConnected());
    link.RemataConexion();
    QVERIFY(!link.isConnected());
    link.RemataConexion();
    QCOMPARE(ended.count(), 1);
}

void TestMessageLinkConnection::settingsReachBothPorts()
{
    m_fixture->settings.directPort = u"2"_s;
    m_fixture->settings.directSpeed = u"19200"_s;
    m_fixture->settings.directParity = u"Par"_s;
    m_fixture->settings.directBits = u"7"_s;
    m_fixture->settings.directStopBits = u"1.5"_s;
    m_fixture->settings.directDtr = u"On"_s;
    m_fixture->settings.directRts = u"on"_s;
    m_fixture->settings.modemPort = u"15"_s;
    m_fixture->settings.modemSpeed = u"300"_s;
    m_fixture->link.ApplySettings();
    QCOMPARE(m_fixture->serie.portNumber(), 3);
    QCOMPARE(m_fixture->serie.settings(), u"19200,E,7,1.5"_s);
    QVERIFY(m_fixture->serie.isDtrEnabled());
    QVERIFY(!m_fixture->serie.isRtsEnabled());
    QCOMPARE(m_fixture->modem.portNumber(), 16);
    QCOMPARE(m_fixture->modem.settings(), u"300,N,8,1"_s);
    QVERIFY(m_fixture->modem.isDtrEnabled());
    QVERIFY(!m_fixture->modem.isRtsEnabled());
}

void TestMessageLinkConnection::settingsReopenThePortInUse()
{
    m_fixture->link.ArrancaConexion(true);
    m_shown.clear();
    m_fixture->settings.modemSpeed = u"115200"_s;
    m_fixture->link.ApplySettings();
    QVERIFY(m_fixture->modem.isOpen());
    QVERIFY(!m_fixture->serie.isOpen());
    QCOMPARE(m_fixture->modem.timesClosed, 1);
    QCOMPARE(m_shown, QStringList{u"COM1,115200,N,8,1|/dev/fake"_s});
}

void TestMessageLinkConnection::settingsLeaveClosedPortsClosed()
{
    m_fixture->link.ApplySettings();
    QVERIFY(!m_fixture->serie.isOpen());
    QVERIFY(!m_fixture->modem.isOpen());
    QVERIFY(m_shown.isEmpty());
}

void TestMessageLinkConnection::unlistedSpeedIsStillApplied()
{
    m_fixture->settings.directSpeed = u"9601"_s;
    m_fixture->link.ApplySettings();
    QCOMPARE(m_fixture->serie.settings(), u"9601,N,8,1"_s);
}

void TestMessageLinkConnection::diallingWaitsUntilTheLinkIsIdle()
{
    IdleDialogue dialogue(m_fixture->link);
    m_fixture->link.setModemDialogue(&dialogue);
    bool starting = false;
    QTimer::singleShot(0, this, [&] {
        starting = m_fixture->link.isStarting();
        m_fixture->link.leaveModemPhase();
    });
    m_fixture->link.ArrancaConexion(true);
    QVERIFY(starting);
    QVERIFY(!m_fixture->link.isStarting());
    QCOMPARE(m_fixture->link.state(), LinkState::Idle);
    QVERIFY(m_fixture->modem.isOpen());
}

void TestMessageLinkConnection::secondStartWhileDiallingDoesNothing()
{
    IdleDialogue dialogue(m_fixture->link);
    m_fixture->link.setModemDialogue(&dialogue);
    QTimer::singleShot(0, this, [&] {
        m_fixture->link.ArrancaConexion(true);
        m_fixture->link.ArrancaConexion(false);
        QCOMPARE(m_fixture->link.state(), LinkState::Dialling);
        QVERIFY(m_fixture->modem.isOpen());
        QVERIFY(m_fixture->tmrTemporizador.isRunning());
        m_fixture->link.leaveModemPhase();
    });
    m_fixture->link.ArrancaConexion(true);
    QCOMPARE(dialogue.starts, 1);
}

void TestMessageLinkConnection::endingWhileDiallingReturnsToTheCaller()
{
    IdleDialogue dialogue(m_fixture->link);
    m_fixture->link.setModemDialogue(&dialogue);
    QTimer::singleShot(0, this, [&] {
        m_fixture->modem.lineChanges.clear();
        m_fixture->link.RemataConexion();
    });
    m_fixture->link.ArrancaConexion(true);
    QVERIFY(!m_fixture->modem.isOpen());
    QCOMPARE(m_fixture->modem.lineChanges, (QList<QByteArray>{"DTR=0 RTS=0", "DTR=1 RTS=0"}));
    QCOMPARE(dialogue.ends, 1);
    QVERIFY(!m_fixture->link.isStarting());
}

void TestMessageLinkConnection::endOfTheProgramWhileDiallingHangsUp()
{
    IdleDialogue dialogue(m_fixture->link);
    m_fixture->link.setModemDialogue(&dialogue);
    QTimer::singleShot(0, this, [&] {
        QTimer::singleShot(0, this, [] { QCoreApplication::quit(); });
        m_fixture->link.ArrancaConexion(true);
    });
    QCoreApplication::exec();
    QVERIFY(!m_fixture->modem.isOpen());
    QCOMPARE(m_fixture->link.state(), LinkState::Idle);
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
}

void TestMessageLinkConnection::portThatCannotBeOpenedIsNotDialled()
{
    IdleDialogue dialogue(m_fixture->link);
    m_fixture->link.setModemDialogue(&dialogue);
    m_fixture->modem.refusal = u"No existe"_s;
    m_fixture->link.ArrancaConexion(true);
    QCOMPARE(dialogue.starts, 0);
    QCOMPARE(m_shown, QStringList{u"COM1,9600,N,8,1|No existe"_s});
}

void TestMessageLinkConnection::modemPhaseTimeOutGoesToTheDialogue()
{
    IdleDialogue dialogue(m_fixture->link);
    m_fixture->link.setModemDialogue(&dialogue);
    QTimer::singleShot(0, this, [&] {
        QVERIFY(m_fixture->tmrTemporizador.fire());
        QCOMPARE(dialogue.timeOuts, 0);
        QVERIFY(m_fixture->tmrTemporizador.fire());
    });
    m_fixture->link.ArrancaConexion(true);
    QCOMPARE(dialogue.timeOuts, 1);
}

void TestMessageLinkConnection::modemsWordsGoToTheDialogueWhileIdle()
{
    IdleDialogue dialogue(m_fixture->link);
    m_fixture->link.setModemDialogue(&dialogue);
    QVERIFY(m_fixture->link.OpenModemPort());
    m_fixture->modem.setReceiveThreshold(1);
    m_fixture->modem.arrive("RING");
    QCOMPARE(dialogue.heard, QByteArray("RING"));
}

void TestMessageLinkConnection::borrowedModemPortIsGivenBack()
{
    QVERIFY(m_fixture->link.OpenModemPort());
    QCOMPARE(m_shown.last(), u"COM1,9600,N,8,1|/dev/fake"_s);
    m_fixture->link.RemataConexion();
    m_fixture->modem.refusal = u"No existe"_s;
    QVERIFY(!m_fixture->link.OpenModemPort());
    m_fixture->link.restoreConnectionType();
    m_fixture->link.RemataConexion();

    // The direct port is in use again: a send finds it, not the modem's, open.
    m_fixture->serie.open();
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(1, body, timeout);
    QVERIFY(!m_fixture->serie.writes.isEmpty());
}

void TestMessageLinkConnection::connectingThroughTheModemForgetsTheBorrowing()
{
    QVERIFY(m_fixture->link.OpenModemPort());
    m_fixture->link.ArrancaConexion(true);
    m_fixture->link.restoreConnectionType();
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(1, body, timeout);
    QCOMPARE(m_fixture->modem.written(), QByteArray::fromHex("6802026801010216"));
}

void TestMessageLinkConnection::modemPhaseForgetsAPendingRequest()
{
    m_fixture->link.ArrancaConexion(false);
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(1, body, timeout);
    m_fixture->link.enterModemPhase(LinkState::PinQuery);
    QVERIFY(!m_fixture->link.Ocupado());
    QVERIFY(m_fixture->link.isModemPhase());
    m_fixture->link.leaveModemPhase();
    QVERIFY(!m_fixture->link.isModemPhase());
}

QTEST_GUILESS_MAIN(TestMessageLinkConnection)
#include "TestMessageLinkConnection.moc"
