#include "Answer.h"
#include "Exchange.h"
#include "LinkFixture.h"
#include "ModemDialogue.h"

#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class RecordingDialogue final : public ModemDialogue {
public:
    void start() override {}
    void received(SerialPort& port) override
    {
        port.setReadLength(0);
        heard += port.read();
    }
    void timedOut() override {}
    void ended() override { ++ends; }

    int ends = 0;
    QByteArray heard;
};

/// A good answer of the clock: read, selector 2, byte 0.
const QByteArray answer = "\x68\x04\x04\x68\x01\x08\x02\x00\x0b\x16"_ba;

} // namespace

/// Of the two ports only the one in use counts, and a link may have no modem dialogue.
class TestMessageLinkPorts : public QObject {
    Q_OBJECT
private slots:
    void answerOnTheOtherPortIsNone();
    void restOfAnAnswerOnTheOtherPortIsNone();
    void lossOfTheOtherPortIsNotShown();
    void bytesOfTheIdleDirectPortDoNotGoToTheDialogue();
    void connectingEndsACommandOfTheModem();
    void connectingWithoutACommandEndsNone();
    void callThatEndsAtOnceIsNotWaitedFor();
    void commandBegunWithinAnAnswerGoesOn();
    void linkWithoutADialogueEndsTheModemPhases();

private:
    static void request(LinkFixture& f)
    {
        QByteArray body;
        qint32 timeout = 0;
        f.link.Envia(1, body, timeout);
    }
    /// A request on the direct port while the modem's is open too.
    static void requestWithBothOpen(LinkFixture& f)
    {
        f.link.ArrancaConexion(false);
        f.modem.open();
        f.modem.setReceiveThreshold(1);
        request(f);
    }
};

void TestMessageLinkPorts::answerOnTheOtherPortIsNone()
{
    LinkFixture f;
    requestWithBothOpen(f);
    f.modem.arrive(answer);
    QCOMPARE(f.link.state(), LinkState::HeaderHunt);
    QVERIFY(f.link.Ocupado());
    f.serie.arrive(answer);
    QVERIFY(!f.link.Ocupado());
}

void TestMessageLinkPorts::restOfAnAnswerOnTheOtherPortIsNone()
{
    LinkFixture f;
    requestWithBothOpen(f);
    f.serie.arrive(answer.first(5));
    QCOMPARE(f.link.state(), LinkState::Body);
    f.modem.arrive(answer.sliced(5));
    QCOMPARE(f.link.state(), LinkState::Body);
    QVERIFY(f.link.Ocupado());
    f.serie.arrive(answer.sliced(5));
    QVERIFY(!f.link.Ocupado());
}

void TestMessageLinkPorts::lossOfTheOtherPortIsNotShown()
{
    LinkFixture f;
    f.link.ArrancaConexion(false);
    f.modem.open();
    QStringList shown;
    connect(&f.link, &MessageLink::VisualizaPorto, this,
            [&](const QString& text, const QString& toolTip) { shown << text + u'|' + toolTip; });
    f.modem.vanish();
    QCOMPARE(shown, QStringList());
    f.serie.vanish();
    QCOMPARE(shown, QStringList{u"COM1,9600,N,8,1|Se ha perdido el puerto /dev/fake"_s});
}

void TestMessageLinkPorts::bytesOfTheIdleDirectPortDoNotGoToTheDialogue()
{
    LinkFixture f;
    RecordingDialogue dialogue;
    f.link.setModemDialogue(&dialogue);
    f.link.ArrancaConexion(false);
    f.serie.setReceiveThreshold(1);
    f.serie.arrive("late");
    QCOMPARE(dialogue.heard, QByteArray());
}

void TestMessageLinkPorts::connectingEndsACommandOfTheModem()
{
    LinkFixture f;
    RecordingDialogue dialogue;
    f.link.setModemDialogue(&dialogue);
    QVERIFY(f.link.OpenModemPort());
    f.link.enterModemPhase(LinkState::PinQuery);
    f.link.ArrancaConexion(false);
    QCOMPARE(dialogue.ends, 1);
    QCOMPARE(f.link.state(), LinkState::Idle);
}

void TestMessageLinkPorts::connectingWithoutACommandEndsNone()
{
    LinkFixture f;
    RecordingDialogue dialogue;
    f.link.setModemDialogue(&dialogue);
    f.link.ArrancaConexion(false);
    QCOMPARE(dialogue.ends, 0);
}

void TestMessageLinkPorts::callThatEndsAtOnceIsNotWaitedFor()
{
    LinkFixture f;
    RecordingDialogue dialogue;
    f.link.setModemDialogue(&dialogue);
    // Ends the wait that should not be.
    bool hasWaited = false;
    QTimer::singleShot(0, &f.link, [&] {
        hasWaited = true;
        f.link.enterModemPhase(LinkState::Dialling);
        f.link.leaveModemPhase();
    });
    f.link.ArrancaConexion(true);
    QVERIFY(!hasWaited);
    QVERIFY(!f.link.isStarting());
}

void TestMessageLinkPorts::commandBegunWithinAnAnswerGoesOn()
{
    LinkFixture f;
    f.link.ArrancaConexion(false);
    Exchange exchange;
    exchange.bind(f.link, isAnyAnswer, [&](quint8, const QByteArray&, LinkStatus) {
        f.link.enterModemPhase(LinkState::PinQuery);
    });
    request(f);
    f.serie.arrive(answer);
    QCOMPARE(f.link.state(), LinkState::PinQuery);
}

void TestMessageLinkPorts::linkWithoutADialogueEndsTheModemPhases()
{
    LinkFixture f;
    QVERIFY(f.link.OpenModemPort());
    f.modem.setReceiveThreshold(1);
    f.link.enterModemPhase(LinkState::PinQuery);
    f.modem.arrive("OK");
    QCOMPARE(f.link.state(), LinkState::PinQuery);
    f.link.armTimer(3s);
    QVERIFY(f.tmrTemporizador.fire());
    QCOMPARE(f.link.state(), LinkState::Idle);
    f.link.enterModemPhase(LinkState::PinQuery);
    f.link.ArrancaConexion(false);
    QCOMPARE(f.link.state(), LinkState::Idle);
    f.link.enterModemPhase(LinkState::PinQuery);
    f.link.RemataConexion();
    QCOMPARE(f.link.state(), LinkState::Idle);
}

QTEST_GUILESS_MAIN(TestMessageLinkPorts)
#include "TestMessageLinkPorts.moc"
