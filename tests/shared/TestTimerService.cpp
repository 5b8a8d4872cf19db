#include "CronoRegistration.h"
#include "TimerServiceFixture.h"

#include <QTest>

/// What the service does on its ticks.
class TestTimerService : public QObject, private TimerServiceFixture {
    Q_OBJECT
private slots:
    void init() { reset(); }

    void withNoClientATickDoesNothingAndEnablesTheTimerAgain();
    void periodBelowOneRegistersAsOne_data();
    void periodBelowOneRegistersAsOne();
    void changedPeriodOfZeroCallsAtEveryVisit();
    void newClientIsNotCalledUntilActivated();
    void deactivatingKeepsThePartialCount();
    void changingThePeriodKeepsThePartialCount();
    void busyAfterEveryCallVisitsOneClientATickInTurn();
    void busyLinkCallsAndCountsNothing();
    void idleLinkServesAllClientsInOneTick();
    void periodsCountTicks();
    void timerIsOffWhileAClientWorks();
    void switchedOffInsideATickItStaysOff();
    void switchedOffAndOnInsideATickItTicksOn();
    void switchingOnInsideATickStartsNoSecondTick();
    void shuttingDownLeavesTheTimerOff();
    void shuttingDownNothingEnablesTheTimer();
    void clientThatRemovesItselfEndsNothingElse();
    void clientThatRemovesAllOthersEndsTheTick();
    void clientThatRegistersAnotherHasItServedFromTheNextTick();
    void removedClientsAreNotCalled();
    void unknownIdentifiersAreIgnored();
    void identifiersCountFromOneAndAreNotUsedAgain();
    void identifiersGoOnPast32767();
    void identifiersInUseAreSkippedAfterTheWrap();
    void registrationLeavesWithItsOwner();
    void registrationOutlivesTheService();
};

void TestTimerService::withNoClientATickDoesNothingAndEnablesTheTimerAgain()
{
    fire(1);
    QVERIFY(m_timer->isEnabled());
}

void TestTimerService::periodBelowOneRegistersAsOne_data()
{
    QTest::addColumn<qint16>("period");
    QTest::newRow("0") << qint16(0);
    QTest::newRow("-1") << qint16(-1);
    QTest::newRow("-32768") << qint16(-32768);
}

void TestTimerService::periodBelowOneRegistersAsOne()
{
    QFETCH(qint16, period);
    Client client(1, m_calls);
    addActive(client, period);
    fire(3);
    QCOMPARE(m_calls, (QList<int>{1, 1, 1}));
}

void TestTimerService::changedPeriodOfZeroCallsAtEveryVisit()
{
    Client client(1, m_calls);
    const qint16 id = addActive(client, 0);
    m_crono->CambiaPeriodo(id, 0);
    fire(3);
    QCOMPARE(m_calls, (QList<int>{1, 1, 1}));
}

void TestTimerService::newClientIsNotCalledUntilActivated()
{
    Client client(1, m_calls);
    const qint16 id = m_crono->EngadeCliente(client, 1);
    fire(5);
    QCOMPARE(m_calls, QList<int>{});
    m_crono->ActivaCliente(id);
    fire(1);
    QCOMPARE(m_calls, QList<int>{1});
}

void TestTimerService::deactivatingKeepsThePartialCount()
{
    Client client(1, m_calls);
    const qint16 id = addActive(client, 10);
    fire(7);
    m_crono->DesactivaCliente(id);
    fire(20);
    m_crono->ActivaCliente(id);
    fire(2);
    QCOMPARE(m_calls, QList<int>{});
    fire(1);
    QCOMPARE(m_calls, QList<int>{1});
}

void TestTimerService::changingThePeriodKeepsThePartialCount()
{
    Client client(1, m_calls);
    const qint16 id = addActive(client, 10);
    fire(4);
    m_crono->CambiaPeriodo(id, 5);
    fire(1);
    QCOMPARE(m_calls, QList<int>{1});
}

void TestTimerService::busyAfterEveryCallVisitsOneClientATickInTurn()
{
    Client one(1, m_calls);
    Client two(2, m_calls);
    Client three(3, m_calls);
    for (Client* client : {&one, &two, &three}) {
        client->work = [this] { m_busy = true; };
        addActive(*client);
    }
    for (int expected : {1, 2, 3, 1}) {
        m_calls.clear();
        fire(1);
        QCOMPARE(m_calls, QList<int>{expected});
        fire(4);
        QCOMPARE(m_calls, QList<int>{expected});
        setBusy(false);
    }
}

void TestTimerService::busyLinkCallsAndCountsNothing()
{
    Client client(1, m_calls);
    addActive(client, 3);
    fire(1);
    setBusy(true);
    fire(50);
    setBusy(false);
    fire(1);
    QCOMPARE(m_calls, QList<int>{});
    fire(1);
    QCOMPARE(m_calls, QList<int>{1});
}

void TestTimerService::idleLinkServesAllClientsInOneTick()
{
    Client one(1, m_calls);
    Client two(2, m_calls);
    addActive(one);
    addActive(two);
    fire(2);
    QCOMPARE(m_calls, (QList<int>{1, 2, 1, 2}));
}

void TestTimerService::periodsCountTicks()
{
    Client main(1, m_calls);
    Client remote(2, m_calls);
    addActive(main, 10);
    addActive(remote, 3);
    fire(10);
    QCOMPARE(m_calls, (QList<int>{2, 2, 2, 1}));
}

void TestTimerService::timerIsOffWhileAClientWorks()
{
    Client client(1, m_calls);
    bool enabledMeanwhile = true;
    client.work = [&] { enabledMeanwhile = m_timer->isEnabled(); };
    addActive(client);
    fire(1);
    QVERIFY(!enabledMeanwhile);
    QVERIFY(m_timer->isEnabled());
}

void TestTimerService::switchedOffInsideATickItStaysOff()
{
    Client client(1, m_calls);
    client.work = [this] { m_crono->setTimerEnabled(false); };
    addActive(client);
    fire(1);
    QVERIFY(!m_timer->isEnabled());
}

void TestTimerService::switchedOffAndOnInsideATickItTicksOn()
{
    Client client(1, m_calls);
    client.work = [this] {
        m_crono->setTimerEnabled(false);
        m_crono->setTimerEnabled(true);
    };
    addActive(client);
    fire(1);
    QVERIFY(m_timer->isEnabled());
}

void TestTimerService::switchingOnInsideATickStartsNoSecondTick()
{
    Client client(1, m_calls);
    client.work = [this] {
        m_crono->setTimerEnabled(true);
        QVERIFY(!m_timer->fire());
    };
    addActive(client);
    fire(1);
    QCOMPARE(m_calls, QList<int>{1});
}

void TestTimerService::shuttingDownLeavesTheTimerOff()
{
    Client client(1, m_calls);
    client.work = [this] { m_globais.ShuttingDown = true; };
    addActive(client);
    fire(1);
    QVERIFY(!m_timer->isEnabled());
}

void TestTimerService::shuttingDownNothingEnablesTheTimer()
{
    m_crono->setTimerEnabled(false);
    m_globais.ShuttingDown = true;
    m_crono->setTimerEnabled(true);
    QVERIFY(!m_timer->isEnabled());
}

void TestTimerService::clientThatRemovesItselfEndsNothingElse()
{
    Client one(1, m_calls);
    Client two(2, m_calls);
    Client three(3, m_calls);
    const qint16 first = addActive(one);
    addActive(two);
    addActive(three);
    one.work = [&] { m_crono->EliminaCliente(first); };
    fire(3);
    QCOMPARE(m_calls.count(1), 1);
    QVERIFY(m_calls.count(2) >= 2);
    QVERIFY(m_calls.count(3) >= 2);
}

void TestTimerService::clientThatRemovesAllOthersEndsTheTick()
{
    Client one(1, m_calls);
    Client two(2, m_calls);
    Client three(3, m_calls);
    const qint16 first = addActive(one);
    const qint16 second = addActive(two);
    const qint16 third = addActive(three);
    one.work = [&] {
        for (qint16 id : {first, second, third})
            m_crono->EliminaCliente(id);
    };
    fire(2);
    QCOMPARE(m_calls, QList<int>{1});
    QVERIFY(m_timer->isEnabled());
}

void TestTimerService::clientThatRegistersAnotherHasItServedFromTheNextTick()
{
    Client one(1, m_calls);
    Client two(2, m_calls);
    bool registered = false;
    one.work = [&] {
        if (!registered)
            addActive(two);
        registered = true;
    };
    addActive(one);
    fire(1);
    QCOMPARE(m_calls, QList<int>{1});
    fire(1);
    QCOMPARE(m_calls, (QList<int>{1, 2, 1}));
}

void TestTimerService::removedClientsAreNotCalled()
{
    Client client(1, m_calls);
    m_crono->EliminaCliente(addActive(client));
    fire(3);
    QCOMPARE(m_calls, QList<int>{});
}

void TestTimerService::unknownIdentifiersAreIgnored()
{
    for (qint16 id : {qint16(0), qint16(-1), qint16(99)}) {
        m_crono->ActivaCliente(id);
        m_crono->DesactivaCliente(id);
        m_crono->CambiaPeriodo(id, 4);
        m_crono->EliminaCliente(id);
    }
    fire(1);
    QCOMPARE(m_calls, QList<int>{});
}

void TestTimerService::identifiersCountFromOneAndAreNotUsedAgain()
{
    Client client(1, m_calls);
    QCOMPARE(m_crono->EngadeCliente(client, 1), qint16(1));
    QCOMPARE(m_crono->EngadeCliente(client, 1), qint16(2));
    m_crono->EliminaCliente(2);
    QCOMPARE(m_crono->EngadeCliente(client, 1), qint16(3));
}

void TestTimerService::identifiersGoOnPast32767()
{
    Client client(1, m_calls);
    for (int i = 0; i < 32767; ++i)
        m_crono->EliminaCliente(m_crono->EngadeCliente(client, 1));
    const qint16 id = addActive(client);
    QCOMPARE(id, qint16(-32768));
    fire(1);
    QCOMPARE(m_calls, QList<int>{1});
    m_crono->EliminaCliente(id);
    fire(1);
    QCOMPARE(m_calls, QList<int>{1});
}

void TestTimerService::identifiersInUseAreSkippedAfterTheWrap()
{
    Client resident(1, m_calls);
    Client passing(2, m_calls);
    QCOMPARE(addActive(resident), qint16(1));
    qint16 id = 0;
    for (int i = 0; i < 65535; ++i) {
        id = m_crono->EngadeCliente(passing, 1);
        QVERIFY(id != 0 && id != 1);
        m_crono->EliminaCliente(id);
    }
    QCOMPARE(id, qint16(2));
    fire(1);
    QCOMPARE(m_calls, QList<int>{1});
}

void TestTimerService::registrationLeavesWithItsOwner()
{
    Client client(1, m_calls);
    {
        CronoRegistration registration(*m_crono, client, 2);
        registration.ActivaCliente();
        fire(2);
        registration.CambiaPeriodo(1);
        fire(1);
        registration.DesactivaCliente();
        fire(2);
        QCOMPARE(m_calls, (QList<int>{1, 1}));
        registration.ActivaCliente();
    }
    fire(3);
    QCOMPARE(m_calls, (QList<int>{1, 1}));
}

void TestTimerService::registrationOutlivesTheService()
{
    Client client(1, m_calls);
    CronoRegistration registration(*m_crono, client, 1);
    m_crono.reset();
    registration.ActivaCliente();
    registration.CambiaPeriodo(2);
    registration.DesactivaCliente();
    registration.EliminaCliente();
    QCOMPARE(registration.id(), qint16(0));
}

QTEST_GUILESS_MAIN(TestTimerService)
#include "TestTimerService.moc"
