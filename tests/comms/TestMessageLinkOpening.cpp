#include "LinkFixture.h"
#include "ModemDialogue.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// A port at the far end of a network: events run while it opens, and its answers may be late.
class TestMessageLinkOpening : public QObject {
    Q_OBJECT
private slots:
    void noRequestMayBeSentMeanwhile();
    void modemThatOpensKeepsRequestsBackToo();
    void secondConnectionDoesNothing();
    void connectionDoesNothingWhileTheModemIsBorrowed();
    void endingTheConnectionShowsNoPort();
    void endingTheConnectionShowsNoEarlierFailure();
    void endedConnectionDoesNotDial();
    void applyingTheSettingsEndsIt();
    void answerTimeGrowsByTheAllowance_data();
    void answerTimeGrowsByTheAllowance();
    void timeOfSeveralTicksGrowsByTheAllowance();
    void timeWithoutAnEndStaysSo();
    void callerGetsTheTimeWithoutTheAllowance();
    void timesOfTheModemGrowToo();
    void otherPortsAllowanceDoesNotCount();

private:
    /// What the status bar shows, with the tool tip behind a bar.
    static void recordPorts(LinkFixture& f, QStringList& shown)
    {
        connect(&f.link, &MessageLink::VisualizaPorto, &f.link,
                [&shown](const QString& text, const QString& toolTip) {
                    shown << text + u'|' + toolTip;
                });
    }
    static qint32 request(LinkFixture& f)
    {
        QByteArray body;
        qint32 timeout = 0;
        f.link.Envia(5, body, timeout);
        return timeout;
    }
};

void TestMessageLinkOpening::noRequestMayBeSentMeanwhile()
{
    LinkFixture f;
    QList<bool> occupied;
    connect(&f.link, &MessageLink::occupationChanged, this,
            [&] { occupied += f.link.isOccupied(); });
    bool isStarting = false;
    f.serie.whileOpening = [&] { isStarting = f.link.isStarting(); };
    f.link.ArrancaConexion(false);
    QVERIFY(isStarting);
    QCOMPARE(occupied, (QList<bool>{true, false}));
    QVERIFY(!f.link.isStarting());
}

void TestMessageLinkOpening::modemThatOpensKeepsRequestsBackToo()
{
    LinkFixture f;
    bool occupied = false;
    f.modem.whileOpening = [&] { occupied = f.link.isOccupied(); };
    QVERIFY(f.link.OpenModemPort());
    QVERIFY(occupied);
    QVERIFY(!f.link.isOccupied());
}

void TestMessageLinkOpening::secondConnectionDoesNothing()
{
    LinkFixture f;
    f.serie.whileOpening = [&] { f.link.ArrancaConexion(true); };
    f.link.ArrancaConexion(false);
    QCOMPARE(f.serie.timesOpened, 1);
    QCOMPARE(f.modem.timesOpened, 0);
    QVERIFY(f.serie.isOpen());
}

void TestMessageLinkOpening::connectionDoesNothingWhileTheModemIsBorrowed()
{
    LinkFixture f;
    f.modem.whileOpening = [&] { f.link.ArrancaConexion(false); };
    QVERIFY(f.link.OpenModemPort());
    QCOMPARE(f.serie.timesOpened, 0);
}

void TestMessageLinkOpening::endingTheConnectionShowsNoPort()
{
    LinkFixture f;
    QStringList shown;
    recordPorts(f, shown);
    QSignalSpy ended(&f.link, &MessageLink::connectionEnded);
    f.serie.whileOpening = [&] { f.link.RemataConexion(); };
    f.link.ArrancaConexion(false);
    QVERIFY(!f.serie.isOpen());
    QCOMPARE(shown, QStringList{u"|"_s});
    QCOMPARE(ended.count(), 1);
    QVERIFY(!f.link.isStarting());
}

void TestMessageLinkOpening::endingTheConnectionShowsNoEarlierFailure()
{
    LinkFixture f;
    f.serie.refusal = u"Permiso denegado"_s;
    f.link.ArrancaConexion(false);
    f.serie.refusal.clear();
    QStringList shown;
    recordPorts(f, shown);
    f.serie.whileOpening = [&] { f.link.RemataConexion(); };
    f.link.ArrancaConexion(false);
    QCOMPARE(shown, QStringList{u"|"_s});
}

void TestMessageLinkOpening::endedConnectionDoesNotDial()
{
    class Dialogue final : public ModemDialogue {
    public:
        void start() override { hasStarted = true; }
        void received(SerialPort& /*port*/) override {}
        void timedOut() override {}
        void ended() override {}
        bool hasStarted = false;
    };
    LinkFixture f;
    Dialogue dialogue;
    f.link.setModemDialogue(&dialogue);
    f.modem.whileOpening = [&] { f.link.RemataConexion(); };
    f.link.ArrancaConexion(true);
    QVERIFY(!dialogue.hasStarted);
}

void TestMessageLinkOpening::applyingTheSettingsEndsIt()
{
    LinkFixture f;
    f.settings.directPort = u"4"_s;
    f.serie.whileOpening = [&] { f.link.ApplySettings(); };
    f.link.ArrancaConexion(false);
    QVERIFY(!f.serie.isOpen());
    QCOMPARE(f.serie.portNumber(), 5);
    QCOMPARE(f.serie.timesOpened, 1);
}

void TestMessageLinkOpening::answerTimeGrowsByTheAllowance_data()
{
    QTest::addColumn<int>("allowance");
    QTest::addColumn<int>("interval");
    QTest::newRow("cable") << 0 << 800;
    QTest::newRow("network") << 3000 << 3800;
}

/// A call has 64 s, which are more than the timer's range: two ticks of it.
void TestMessageLinkOpening::timeOfSeveralTicksGrowsByTheAllowance()
{
    LinkFixture f;
    f.modem.allowance = 3s;
    QVERIFY(f.link.OpenModemPort());
    f.link.enterModemPhase(LinkState::PinQuery);
    f.link.armTimer(64s);
    QCOMPARE(f.tmrTemporizador.interval(), 31232ms + 1500ms);
    QVERIFY(f.tmrTemporizador.fire());
    QVERIFY(f.tmrTemporizador.isEnabled());
    f.tmrTemporizador.fire();
    QVERIFY(!f.tmrTemporizador.isEnabled());
}

void TestMessageLinkOpening::timeWithoutAnEndStaysSo()
{
    LinkFixture f;
    f.modem.allowance = 3s;
    QVERIFY(f.link.OpenModemPort());
    f.link.enterModemPhase(LinkState::PinQuery);
    f.link.armTimer(65536ms);
    QCOMPARE(f.tmrTemporizador.interval(), 0ms);
}

void TestMessageLinkOpening::answerTimeGrowsByTheAllowance()
{
    QFETCH(int, allowance);
    LinkFixture f;
    f.serie.allowance = std::chrono::milliseconds(allowance);
    f.link.ArrancaConexion(false);
    request(f);
    QTEST(static_cast<int>(f.tmrTemporizador.interval().count()), "interval");
}

void TestMessageLinkOpening::callerGetsTheTimeWithoutTheAllowance()
{
    LinkFixture f;
    f.serie.allowance = 3s;
    f.link.ArrancaConexion(false);
    QCOMPARE(request(f), 800);
}

void TestMessageLinkOpening::timesOfTheModemGrowToo()
{
    LinkFixture f;
    f.modem.allowance = 3s;
    QVERIFY(f.link.OpenModemPort());
    f.link.enterModemPhase(LinkState::PinQuery);
    f.link.armTimer(1s);
    QCOMPARE(f.tmrTemporizador.interval(), 4s);
}

void TestMessageLinkOpening::otherPortsAllowanceDoesNotCount()
{
    LinkFixture f;
    f.modem.allowance = 3s;
    f.link.ArrancaConexion(false);
    request(f);
    QCOMPARE(f.tmrTemporizador.interval(), 800ms);
}

QTEST_GUILESS_MAIN(TestMessageLinkOpening)
#include "TestMessageLinkOpening.moc"
