#include "BeatTimer.h"
#include "PreciseTimer.h"
#include "TickTimer.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <functional>
#include <memory>

using namespace std::chrono_literals;

/// All kinds of timer. Tests wait for a time only without processing events, and it has then passed
/// for certain: no test depends on how busy the machine is.
class TestIntervalTimer : public QObject {
    Q_OBJECT

private slots:
    void ticksAgainAndAgain_data() { allKinds(); }
    void ticksAgainAndAgain();
    void intervalOfNothingKeepsItStill_data() { allKinds(); }
    void intervalOfNothingKeepsItStill();
    void disabledTimerDoesNotTick_data() { allKinds(); }
    void disabledTimerDoesNotTick();
    void settingWhatItHasChangesNothing_data() { allKinds(); }
    void settingWhatItHasChangesNothing();
    void anotherIntervalStartsAnew_data() { allKinds(); }
    void anotherIntervalStartsAnew();
    void intervalOfNothingStopsARunningTimer_data() { allKinds(); }
    void intervalOfNothingStopsARunningTimer();
    void missedTicksComeAsOne_data() { allKinds(); }
    void missedTicksComeAsOne();
    void preciseTimerIsNeverEarly();
    void preciseTimerStartsAnewWhenEnabledAnew();
    void tickTimerKeepsItsBeatWhileATickIsWorkedOn_data() { beatingKinds(); }
    void tickTimerKeepsItsBeatWhileATickIsWorkedOn();
    void disabledTickTimerWakesTheProgramOnceAtMost();
    void tickTimerSwitchedOffInItsTickRunsAgainWhenEnabled_data() { allKinds(); }
    void tickTimerSwitchedOffInItsTickRunsAgainWhenEnabled();

private:
    using Maker = std::function<std::unique_ptr<IntervalTimer>()>;

    static void allKinds()
    {
        QTest::addColumn<Maker>("make");
        QTest::newRow("precise timer") << Maker([] { return std::make_unique<PreciseTimer>(); });
        addBeatingKinds();
    }
    static void beatingKinds()
    {
        QTest::addColumn<Maker>("make");
        addBeatingKinds();
    }
    static void addBeatingKinds()
    {
        QTest::newRow("beat timer") << Maker([] { return std::make_unique<BeatTimer>(); });
        QTest::newRow("tick timer of this system") << Maker(makeTickTimer);
    }
    /// Whether the timer's time has passed.
    static bool isDue(IntervalTimer& timer)
    {
#ifdef Q_OS_WIN
        // A thread of the system reports ticks at any time, but in the order of their times.
        PreciseTimer later;
        later.setInterval(20ms);
        QList<const IntervalTimer*> order;
        QEventLoop loop;
        for (const IntervalTimer* each : {&timer, static_cast<IntervalTimer*>(&later)}) {
            connect(each, &IntervalTimer::tick, &loop, [&order, each] { order.append(each); });
            connect(each, &IntervalTimer::tick, &loop, &QEventLoop::quit);
        }
        later.setEnabled(true);
        loop.exec();
        return order.first() == &timer;
#else
        QSignalSpy ticks(&timer, &IntervalTimer::tick);
        QCoreApplication::processEvents();
        return ticks.count() == 1;
#endif
    }
    /// Processes events until another timer has ticked three times.
    static void letTimePass()
    {
        PreciseTimer other;
        other.setInterval(10ms);
        QSignalSpy ticks(&other, &IntervalTimer::tick);
        other.setEnabled(true);
        QTRY_VERIFY(ticks.count() >= 3);
    }
};

void TestIntervalTimer::ticksAgainAndAgain()
{
    QFETCH(Maker, make);
    const auto timer = make();
    QSignalSpy ticks(timer.get(), &IntervalTimer::tick);
    timer->setInterval(1ms);
    timer->setEnabled(true);
    QVERIFY(timer->isEnabled());
    QCOMPARE(timer->interval(), 1ms);
    QTRY_VERIFY(ticks.count() >= 5);
}

void TestIntervalTimer::intervalOfNothingKeepsItStill()
{
    QFETCH(Maker, make);
    const auto timer = make();
    QSignalSpy ticks(timer.get(), &IntervalTimer::tick);
    timer->setEnabled(true);
    letTimePass();
    QCOMPARE(ticks.count(), 0);
    QVERIFY(timer->isEnabled());

    timer->setInterval(1ms);
    QTRY_VERIFY(ticks.count() >= 1);
}

void TestIntervalTimer::disabledTimerDoesNotTick()
{
    QFETCH(Maker, make);
    const auto timer = make();
    QSignalSpy ticks(timer.get(), &IntervalTimer::tick);
    timer->setInterval(1ms);
    letTimePass();
    QCOMPARE(ticks.count(), 0);

    timer->setEnabled(true);
    QTRY_VERIFY(ticks.count() >= 1);
    timer->setEnabled(false);
    ticks.clear();
    letTimePass();
    QCOMPARE(ticks.count(), 0);
}

void TestIntervalTimer::settingWhatItHasChangesNothing()
{
    QFETCH(Maker, make);
    const auto timer = make();
    timer->setInterval(50ms);
    timer->setEnabled(true);
    QThread::msleep(60);
    timer->setInterval(50ms);
    timer->setEnabled(true);
    // If it had been restarted, it would be due in 50 ms.
    QVERIFY(isDue(*timer));
}

void TestIntervalTimer::anotherIntervalStartsAnew()
{
    QFETCH(Maker, make);
    const auto timer = make();
    QSignalSpy ticks(timer.get(), &IntervalTimer::tick);
    timer->setInterval(20ms);
    timer->setEnabled(true);
    QThread::msleep(30);
    timer->setInterval(3600000ms);
    letTimePass();
    QCOMPARE(ticks.count(), 0);
}

void TestIntervalTimer::intervalOfNothingStopsARunningTimer()
{
    QFETCH(Maker, make);
    const auto timer = make();
    timer->setInterval(1ms);
    timer->setEnabled(true);
    QSignalSpy ticks(timer.get(), &IntervalTimer::tick);
    QTRY_VERIFY(ticks.count() >= 1);
    timer->setInterval(0ms);
    ticks.clear();
    letTimePass();
    QCOMPARE(ticks.count(), 0);
}

void TestIntervalTimer::missedTicksComeAsOne()
{
#ifdef Q_OS_WIN
    QSKIP("A thread of the system's tells of each tick there, in its own time.");
#endif
    QFETCH(Maker, make);
    const auto timer = make();
    QSignalSpy ticks(timer.get(), &IntervalTimer::tick);
    timer->setInterval(50ms);
    timer->setEnabled(true);
    QThread::msleep(180);
    QCoreApplication::processEvents();
    QCOMPARE(ticks.count(), 1);
}

#ifdef Q_OS_WIN
// The two clocks there differ by a fraction of a millisecond.
constexpr qint64 earliest = 199'000'000;
#else
constexpr qint64 earliest = 200'000'000;
#endif

void TestIntervalTimer::preciseTimerIsNeverEarly()
{
    PreciseTimer timer;
    timer.setInterval(200ms);
    for (int round = 0; round < 3; ++round) {
        QSignalSpy ticks(&timer, &IntervalTimer::tick);
        QElapsedTimer elapsed;
        elapsed.start();
        timer.setEnabled(true);
        QVERIFY(ticks.wait());
        QVERIFY2(elapsed.nsecsElapsed() >= earliest, QByteArray::number(elapsed.nsecsElapsed()));
        timer.setEnabled(false);
    }
}

void TestIntervalTimer::preciseTimerStartsAnewWhenEnabledAnew()
{
    PreciseTimer timer;
    QSignalSpy ticks(&timer, &IntervalTimer::tick);
    timer.setInterval(200ms);
    timer.setEnabled(true);
    QThread::msleep(210);
    QElapsedTimer elapsed;
    elapsed.start();
    timer.setEnabled(false);
    timer.setEnabled(true);
    QVERIFY(ticks.wait());
    QVERIFY(elapsed.nsecsElapsed() >= earliest);
}

void TestIntervalTimer::tickTimerKeepsItsBeatWhileATickIsWorkedOn()
{
    QFETCH(Maker, make);
    const auto timer = make();
    int ticks = 0;
    connect(timer.get(), &IntervalTimer::tick, this, [&] {
        timer->setEnabled(false);
        if (++ticks == 1)
            QThread::msleep(60);
        timer->setEnabled(true);
    });
    timer->setInterval(50ms);
    timer->setEnabled(true);
    QTRY_COMPARE(ticks, 1);
    // The timer expired during the work of the first tick: the next tick is due now, not in 50 ms.
    QVERIFY(isDue(*timer));
}

/// Counts how often the timer wakes the program.
class WakeUpCounter : public QObject {
public:
    explicit WakeUpCounter(QObject* timer) : m_timer(timer)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched->parent() == m_timer && event->type() == QEvent::SockAct)
            ++count;
        return false;
    }
    int count = 0;

private:
    QObject* m_timer;
};

void TestIntervalTimer::disabledTickTimerWakesTheProgramOnceAtMost()
{
#ifndef Q_OS_LINUX
    QSKIP("the kernel timer of Linux is not used");
#endif
    const auto timer = makeTickTimer();
    QSignalSpy ticks(timer.get(), &IntervalTimer::tick);
    WakeUpCounter wakeUps(timer.get());
    timer->setInterval(1ms);
    timer->setEnabled(true);
    QTRY_VERIFY(ticks.count() >= 3);
    QVERIFY(wakeUps.count >= 3);

    timer->setEnabled(false);
    wakeUps.count = 0;
    letTimePass();
    QVERIFY2(wakeUps.count <= 1, QByteArray::number(wakeUps.count));
}

void TestIntervalTimer::tickTimerSwitchedOffInItsTickRunsAgainWhenEnabled()
{
    QFETCH(Maker, make);
    const auto timer = make();
    connect(timer.get(), &IntervalTimer::tick, this, [&] { timer->setEnabled(false); });
    QSignalSpy ticks(timer.get(), &IntervalTimer::tick);
    timer->setInterval(1ms);
    timer->setEnabled(true);
    QTRY_COMPARE(ticks.count(), 1);
    letTimePass();
    QCOMPARE(ticks.count(), 1);

    timer->setEnabled(true);
    QTRY_COMPARE(ticks.count(), 2);
}

QTEST_GUILESS_MAIN(TestIntervalTimer)
#include "TestIntervalTimer.moc"
