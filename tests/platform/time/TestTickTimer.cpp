#include "NoDescriptors.h"
#include "PreciseTimer.h"
#include "QtTickTimer.h"
#include "SystemTickTimer.h"

#include <QEventLoop>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <functional>

using namespace std::chrono_literals;

namespace {

/// Processes events until another timer has ticked three times.
void letTimePass()
{
    PreciseTimer other;
    other.setInterval(10ms);
    QSignalSpy ticks(&other, &IntervalTimer::tick);
    other.setEnabled(true);
    QTRY_VERIFY(ticks.count() >= 3);
}

/// Counts how often a timer wakes the program, with or without a signal.
class WakeUpCounter : public QObject {
public:
    explicit WakeUpCounter(TickTimer& timer) : m_timer(&timer)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool isWakeUp = event->type() == QEvent::SockAct || event->type() == QEvent::Timer;
        count += isWakeUp && watched->parent() == m_timer ? 1 : 0;
        return false;
    }
    int count = 0;

private:
    const TickTimer* m_timer;
};

/// A timer whose system the test plays.
class PlayedTimer : public TickTimer {
public:
    using TickTimer::expired;
    qint64 now() const override { return tick; }

    qint64 tick = 0;
    QList<qint64> armed;

private:
    void arm(qint64 wished) override { armed.append(wished); }
    void disarm() override {}
};

/// A wake-up that no test lives to see.
constexpr qint64 anHour = 3600000;

} // namespace

/// The tick timers on the clock of the system. Tests wait for events, and for a time only without
/// processing events: it has then passed for certain.
class TestTickTimer : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data();
    void init();
    void cleanup() { m_timer.reset(); }

    void ticksPassWhileItSleeps();
    void itWakesOnceAndNotBeforeItsTick();
    void tickThatHasPassedWakesAtOnce();
    void wishDuringAWakeUpIsGranted();
    void earlierWishReplacesALaterOne();
    void laterWishReplacesAnEarlierOne();
    void sleepingCancelsTheWish();
    void switchedOffItWakesTheProgramOnceAtMost();
    void wishOfATimerThatIsOffIsForgotten();
    void wakeUpOfAnotherTickIsNoReasonToSignal();
    void earlyWakeUpIsAskedForAgain();
    void qTimerRunsDuringTheWorkOfAWakeUpAndNotAfterIt();

private:
    using Maker = std::function<std::unique_ptr<TickTimer>()>;

    std::unique_ptr<TickTimer> m_timer;
    std::unique_ptr<QSignalSpy> m_wakes;
};

void TestTickTimer::initTestCase_data()
{
    QTest::addColumn<Maker>("make");
    QTest::newRow("on a QTimer") << Maker([] { return std::make_unique<QtTickTimer>(); });
    QTest::newRow("of this system") << Maker(makeTickTimer);
#ifdef Q_OS_UNIX
    QTest::newRow("of this system without descriptors") << Maker([] {
        const NoDescriptors none;
        return makeTickTimer();
    });
#endif
}

void TestTickTimer::init()
{
    QFETCH_GLOBAL(Maker, make);
    m_timer = make();
    m_wakes = std::make_unique<QSignalSpy>(m_timer.get(), &TickTimer::wake);
    m_timer->setEnabled(true);
}

void TestTickTimer::ticksPassWhileItSleeps()
{
    const WakeUpCounter wakeUps(*m_timer);
    const qint64 before = m_timer->now();
    QThread::msleep(20);
    QVERIFY(m_timer->now() >= before + 20);
    m_timer->setEnabled(false);
    const qint64 off = m_timer->now();
    QThread::msleep(20);
    QVERIFY(m_timer->now() >= off + 20);
    QCoreApplication::processEvents();
    QCOMPARE(wakeUps.count, 0);
}

void TestTickTimer::itWakesOnceAndNotBeforeItsTick()
{
    const qint64 tick = m_timer->now() + 30;
    qint64 woken = 0;
    TickTimer& timer = *m_timer;
    connect(&timer, &TickTimer::wake, this, [&] { woken = m_timer->now(); });
    m_timer->wakeAt(tick);
    QTRY_COMPARE(m_wakes->count(), 1);
    QVERIFY(woken >= tick);
    letTimePass();
    QCOMPARE(m_wakes->count(), 1);
}

void TestTickTimer::tickThatHasPassedWakesAtOnce()
{
    QThread::msleep(5);
    m_timer->wakeAt(m_timer->now() - 3);
    QTRY_COMPARE(m_wakes->count(), 1);
}

void TestTickTimer::wishDuringAWakeUpIsGranted()
{
    QList<qint64> ticks;
    TickTimer& timer = *m_timer;
    connect(&timer, &TickTimer::wake, this, [&] {
        ticks.append(m_timer->now());
        m_timer->wakeAt(m_timer->now() + 1);
    });
    m_timer->wakeAt(m_timer->now() + 1);
    QTRY_VERIFY(ticks.size() >= 5);
    for (qsizetype i = 1; i < ticks.size(); ++i)
        QVERIFY(ticks[i] > ticks[i - 1]);
}

void TestTickTimer::earlierWishReplacesALaterOne()
{
    m_timer->wakeAt(m_timer->now() + anHour);
    m_timer->wakeAt(m_timer->now() + 1);
    QTRY_COMPARE(m_wakes->count(), 1);
}

void TestTickTimer::laterWishReplacesAnEarlierOne()
{
    m_timer->wakeAt(m_timer->now() + 1);
    m_timer->wakeAt(m_timer->now() + anHour);
    QThread::msleep(5);
    letTimePass();
    QCOMPARE(m_wakes->count(), 0);
}

void TestTickTimer::sleepingCancelsTheWish()
{
    const WakeUpCounter wakeUps(*m_timer);
    m_timer->wakeAt(m_timer->now() + 1);
    m_timer->sleep();
    QThread::msleep(5);
    letTimePass();
    QCOMPARE(m_wakes->count(), 0);
    QCOMPARE(wakeUps.count, 0);
}

void TestTickTimer::switchedOffItWakesTheProgramOnceAtMost()
{
    const WakeUpCounter wakeUps(*m_timer);
    m_timer->wakeAt(m_timer->now() + 1);
    m_timer->setEnabled(false);
    letTimePass();
    QCOMPARE(m_wakes->count(), 0);
    QVERIFY2(wakeUps.count <= 1, QByteArray::number(wakeUps.count));

    m_timer->setEnabled(true);
    letTimePass();
    QCOMPARE(m_wakes->count(), 0);
}

void TestTickTimer::wishOfATimerThatIsOffIsForgotten()
{
    m_timer->setEnabled(false);
    m_timer->wakeAt(m_timer->now() + 1);
    m_timer->setEnabled(true);
    letTimePass();
    QCOMPARE(m_wakes->count(), 0);
}

void TestTickTimer::wakeUpOfAnotherTickIsNoReasonToSignal()
{
    // The system's timer still runs for the first wish when the second is made.
    const qint64 tick = m_timer->now() + 40;
    m_timer->wakeAt(tick - 39);
    m_timer->setEnabled(false);
    m_timer->setEnabled(true);
    QThread::msleep(5);
    qint64 woken = 0;
    TickTimer& timer = *m_timer;
    connect(&timer, &TickTimer::wake, this, [&] { woken = m_timer->now(); });
    m_timer->wakeAt(tick);
    QTRY_COMPARE(m_wakes->count(), 1);
    QVERIFY(woken >= tick);
}

void TestTickTimer::earlyWakeUpIsAskedForAgain()
{
    PlayedTimer timer;
    QSignalSpy wakes(&timer, &TickTimer::wake);
    timer.setEnabled(true);
    timer.wakeAt(10);
    timer.wakeAt(10);
    timer.tick = 9;
    QVERIFY(timer.expired());
    QCOMPARE(wakes.count(), 0);
    QCOMPARE(timer.armed, (QList<qint64>{10, 10}));
    timer.tick = 10;
    QVERIFY(timer.expired());
    QCOMPARE(wakes.count(), 1);
    QCOMPARE(timer.armed.size(), 2);
}

// The fine resolution of Windows depends on it.
void TestTickTimer::qTimerRunsDuringTheWorkOfAWakeUpAndNotAfterIt()
{
    const auto* qTimer = m_timer->findChild<QTimer*>();
    if (!qTimer)
        QSKIP("the timer of this system is no QTimer");
    bool runsMeanwhile = false;
    TickTimer& timer = *m_timer;
    connect(&timer, &TickTimer::wake, this, [&] {
        runsMeanwhile = qTimer->isActive();
        m_timer->sleep();
    });
    QVERIFY(!qTimer->isActive());
    m_timer->wakeAt(m_timer->now() + 1);
    QTRY_COMPARE(m_wakes->count(), 1);
    QVERIFY(runsMeanwhile);
    QVERIFY(!qTimer->isActive());
}

QTEST_GUILESS_MAIN(TestTickTimer)
#include "TestTickTimer.moc"
