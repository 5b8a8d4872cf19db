#include "PreciseTimer.h"
#include "SystemTickTimer.h"
#include "TimerServiceFixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

/// The ticks that the service sleeps through, and those that come too late.
class TestTimerServiceSleep : public QObject, private TimerServiceFixture {
    Q_OBJECT
private slots:
    void init() { reset(); }

    void eventLoopInsideATickStartsNoSecondTick();
    void ticksThatNobodyIsDueOnWakeNobody();
    void ticksThatCameTooLateCountAsOne();
    void changeDuringALateTickComesBeforeIt();
    void changeBesideALateTickDoesNotPutItOff_data();
    void changeBesideALateTickDoesNotPutItOff();
    void ticksDuringALongCallDoNotCount();
    void sleepsOnTheTimerOfThisSystem();
};

// As when a client opens a message box: its event loop runs inside the tick.
void TestTimerServiceSleep::eventLoopInsideATickStartsNoSecondTick()
{
    const auto timer = makeTickTimer();
    frmCrono crono(*timer, m_globais, [] { return false; });
    Client client(1, m_calls);
    int callsAfterTheBox = 0;
    client.work = [&] {
        PreciseTimer later;
        later.setInterval(20ms);
        QSignalSpy past(&later, &IntervalTimer::tick);
        later.setEnabled(true);
        QVERIFY(past.wait());
        callsAfterTheBox = static_cast<int>(m_calls.size());
        crono.setTimerEnabled(false);
    };
    crono.ActivaCliente(crono.EngadeCliente(client, 1));
    crono.setTimerEnabled(true);
    QTRY_COMPARE(callsAfterTheBox, 1);
}

void TestTimerServiceSleep::ticksThatNobodyIsDueOnWakeNobody()
{
    Client client(1, m_calls);
    addActive(client, 10);
    const QSignalSpy wakeUps(m_timer.get(), &TickTimer::wake);
    fire(30);
    QCOMPARE(m_calls, (QList<int>{1, 1, 1}));
    QCOMPARE(wakeUps.count(), 3);
    setBusy(true);
    fire(100);
    QCOMPARE(wakeUps.count(), 3);
}

void TestTimerServiceSleep::ticksThatCameTooLateCountAsOne()
{
    Client client(1, m_calls);
    Client other(2, m_calls);
    addActive(client, 10);
    addActive(other, 15);
    m_timer->passUnnoticed(90);
    fire(1);
    QCOMPARE(m_calls, QList<int>{1});
    fire(4);
    QCOMPARE(m_calls, QList<int>{1});
    fire(1);
    QCOMPARE(m_calls, (QList<int>{1, 2}));
}

void TestTimerServiceSleep::changeDuringALateTickComesBeforeIt()
{
    Client client(1, m_calls);
    Client other(2, m_calls);
    const qint16 first = addActive(client, 10);
    addActive(other, 15);
    m_timer->passUnnoticed(90);
    m_crono->DesactivaCliente(first);
    fire(4);
    QCOMPARE(m_calls, QList<int>{});
    fire(1);
    QCOMPARE(m_calls, QList<int>{2});
}

void TestTimerServiceSleep::changeBesideALateTickDoesNotPutItOff_data()
{
    QTest::addColumn<bool>("isSwitchedOn");
    QTest::newRow("period of another client") << false;
    QTest::newRow("switched on again") << true;
}

void TestTimerServiceSleep::changeBesideALateTickDoesNotPutItOff()
{
    QFETCH(bool, isSwitchedOn);
    Client client(1, m_calls);
    Client other(2, m_calls);
    addActive(client, 10);
    const qint16 second = addActive(other, 15);
    m_timer->passUnnoticed(10);
    if (isSwitchedOn)
        m_crono->setTimerEnabled(true);
    else
        m_crono->CambiaPeriodo(second, 20);
    m_timer->notice();
    QCOMPARE(m_calls, QList<int>{1});
}

void TestTimerServiceSleep::ticksDuringALongCallDoNotCount()
{
    Client client(1, m_calls);
    client.work = [this] { m_timer->passUnnoticed(50); };
    addActive(client, 10);
    fire(10);
    fire(9);
    QCOMPARE(m_calls, QList<int>{1});
    fire(1);
    QCOMPARE(m_calls, (QList<int>{1, 1}));
}

void TestTimerServiceSleep::sleepsOnTheTimerOfThisSystem()
{
    const auto timer = makeTickTimer();
    bool busy = false;
    frmCrono crono(*timer, m_globais, [&busy] { return busy; });
    const QSignalSpy wakeUps(timer.get(), &TickTimer::wake);
    Client client(1, m_calls);
    QList<qint64> ticks;
    client.work = [&] {
        ticks.append(timer->now());
        busy = true;
    };
    crono.setTimerEnabled(true);
    crono.ActivaCliente(crono.EngadeCliente(client, 10));
    for (int call = 1; call <= 3; ++call) {
        const qint64 idleSince = timer->now();
        busy = false;
        crono.ocupadoChanged();
        QTRY_COMPARE(ticks.size(), call);
        QVERIFY(ticks.last() >= idleSince + 10);
    }
    QCOMPARE(wakeUps.count(), 3);
}

QTEST_GUILESS_MAIN(TestTimerServiceSleep)
#include "TestTimerServiceSleep.moc"
