#include "ModemDialogue.h"
#include "WorkflowFixture.h"

using namespace Qt::StringLiterals;

namespace {

/// A call that is up as soon as it begins. It looks whether the timer service ticks meanwhile.
class DialogueThatLooks final : public ModemDialogue {
public:
    DialogueThatLooks(MessageLink& link, const FakeTickTimer& tmrCrono)
        : m_link(link), m_timer(tmrCrono)
    {}

    void start() override
    {
        m_link.enterModemPhase(LinkState::Dialling);
        seen += m_timer.isEnabled() ? u"ticks"_s : u"no tick"_s;
        m_link.leaveModemPhase();
    }
    void received(SerialPort& /*port*/) override {}
    void timedOut() override {}
    void ended() override {}

    QStringList seen;

private:
    MessageLink& m_link;
    const FakeTickTimer& m_timer;
};

} // namespace

/// How a connection ends.
class TestConnectionEnd : public WorkflowFixture {
    Q_OBJECT
private slots:
    void init() { load(); }

    void loadingLeavesWhatAnEndedConnectionLeaves();
    void desconectarEndsWithoutSendingAnything();
    void desconectarWithARequestOutstandingForgetsIt();
    void desconectarAndConectarAgainStartsAfresh();
    void conectarWhileIdentifyingStartsAnew();
    void conectarWhileEstablishedEstablishesAnew();
    void endedConnectionIsNotEstablished();
    void nothingTicksWhileTheModemDials();
    void nothingTicksWhileThePortOpens();
    void endOfTheProgramWhileThePortOpensConnectsNothing();
    void afterTheEndNothingTicks();
    void stepsOfTheEndComeInTheirOrder();
    void connectionThatHasEndedByItselfEndsOnce();
    void onlyAClockInRemoteControlNeedsConsent();
    void closingStopsEverythingForGood();
};

void TestConnectionEnd::loadingLeavesWhatAnEndedConnectionLeaves()
{
    QCOMPARE(m_workflow->state(), ConnectionState::Disconnected);
    QCOMPARE(m_workflow->ClientId(), qint16(1));
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
    QCOMPARE(m_steps,
             (QStringList{u"timer off, locked"_s, u"windows"_s, u"link ended"_s, u"not shown"_s}));
}

void TestConnectionEnd::desconectarEndsWithoutSendingAnything()
{
    establish();
    m_workflow->Desconectar();
    QCOMPARE(m_workflow->state(), ConnectionState::Disconnected);
    QVERIFY(!m_fixture->hasRequest());
    QVERIFY(!m_fixture->serie.isOpen());
    QCOMPARE(m_fixture->log.lines,
             (QStringList{u"Interrumpiendo conexión"_s, u"Conexión interrumpida"_s}));
}

void TestConnectionEnd::desconectarWithARequestOutstandingForgetsIt()
{
    establish();
    m_fixture->tick(10);
    QVERIFY(m_fixture->link.Ocupado());
    m_workflow->Desconectar();
    QVERIFY(!m_fixture->link.Ocupado());
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
    m_workflow->Conectar(false);
    m_fixture->log.lines.clear();
    m_fixture->answer(LinkFixture::fullBlock());
    QCOMPARE(m_workflow->FailedAttempts(), qint16(0));
    QVERIFY(!m_workflow->Established());
    QCOMPARE(m_fixture->log.lines, QStringList());
}

void TestConnectionEnd::desconectarAndConectarAgainStartsAfresh()
{
    establish();
    m_workflow->Desconectar();
    m_fixture->log.lines.clear();
    identify();
    answerPoll(LinkFixture::fullBlock());
    QCOMPARE(m_fixture->log.lines,
             (QStringList{u"Estableciendo conexión..."_s, u"Identificación aceptada"_s,
                          u"Conexión establecida"_s}));
}

void TestConnectionEnd::conectarWhileIdentifyingStartsAnew()
{
    m_workflow->Conectar(false);
    for (int attempt = 0; attempt < 3; ++attempt)
        failIdentification();
    m_fixture->tick(10);
    m_fixture->takeRequest();
    m_workflow->Conectar(false);
    QCOMPARE(m_workflow->FailedAttempts(), qint16(0));
    // The earlier request is forgotten, and its late answer is ignored.
    m_fixture->answerHex("0205");
    QCOMPARE(m_workflow->FailedAttempts(), qint16(0));
    for (int attempt = 0; attempt < 3; ++attempt)
        failIdentification();
    QCOMPARE(m_workflow->state(), ConnectionState::Identifying);
}

void TestConnectionEnd::conectarWhileEstablishedEstablishesAnew()
{
    establish();
    m_workflow->Conectar(false);
    QVERIFY(!m_workflow->Established());
    m_fixture->tick(10);
    m_fixture->takeRequest();
    m_fixture->answerHex("0200");
    answerPoll(LinkFixture::fullBlock());
    QVERIFY(m_workflow->Established());
    QCOMPARE(m_fixture->log.lines.last(), u"Conexión establecida"_s);
}

void TestConnectionEnd::endedConnectionIsNotEstablished()
{
    establish();
    m_workflow->Desconectar();
    QVERIFY(!m_workflow->Established());
}

void TestConnectionEnd::nothingTicksWhileTheModemDials()
{
    establish();
    DialogueThatLooks dialogue(m_fixture->link, m_fixture->tmrCrono);
    m_fixture->link.setModemDialogue(&dialogue);
    m_workflow->Conectar(true);
    QCOMPARE(dialogue.seen, QStringList{u"no tick"_s});
    QVERIFY(m_fixture->tmrCrono.isEnabled());
}

void TestConnectionEnd::nothingTicksWhileThePortOpens()
{
    bool ticks = true;
    m_fixture->serie.whileOpening = [&] { ticks = m_fixture->tmrCrono.isEnabled(); };
    m_workflow->Conectar(false);
    QVERIFY(!ticks);
    QVERIFY(m_fixture->tmrCrono.isEnabled());
}

void TestConnectionEnd::endOfTheProgramWhileThePortOpensConnectsNothing()
{
    m_fixture->log.lines.clear();
    m_fixture->serie.whileOpening = [this] { m_workflow->unload(); };
    m_workflow->Conectar(false);
    QCOMPARE(m_workflow->state(), ConnectionState::Disconnected);
    QVERIFY(!m_fixture->serie.isOpen());
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
    QCOMPARE(m_fixture->log.lines, QStringList());
}

void TestConnectionEnd::afterTheEndNothingTicks()
{
    m_fixture->serie.refusal = u"No hay tal puerto"_s;
    m_workflow->Conectar(false);
    while (m_fixture->tmrCrono.fire()) {
    }
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
}

void TestConnectionEnd::stepsOfTheEndComeInTheirOrder()
{
    establish();
    m_workflow->Desconectar();
    QCOMPARE(m_steps,
             (QStringList{u"timer off, locked"_s, u"windows"_s, u"link ended"_s, u"not shown"_s}));
}

void TestConnectionEnd::connectionThatHasEndedByItselfEndsOnce()
{
    establish();
    m_fixture->serie.vanish();
    m_fixture->tick(80);
    QCOMPARE(m_fixture->log.lines.count(u"Conexión interrumpida"_s), 1);
    m_workflow->Desconectar();
    QCOMPARE(m_fixture->log.lines.count(u"Conexión interrumpida"_s), 1);
    QCOMPARE(m_fixture->log.lines.count(u"Interrumpiendo conexión"_s), 0);
}

void TestConnectionEnd::onlyAClockInRemoteControlNeedsConsent()
{
    establish();
    QVERIFY(!m_workflow->exitNeedsConsent());
    answerPoll(LinkFixture::remoteControlledBlock());
    QVERIFY(m_workflow->exitNeedsConsent());
}

void TestConnectionEnd::closingStopsEverythingForGood()
{
    establish();
    m_fixture->tick(10);
    m_workflow->unload();
    QVERIFY(m_fixture->globais.ShuttingDown);
    QVERIFY(!m_fixture->serie.isOpen());
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
    m_workflow->Conectar(false);
    QVERIFY(!m_fixture->serie.isOpen());
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
}

QTEST_GUILESS_MAIN(TestConnectionEnd)
#include "TestConnectionEnd.moc"
