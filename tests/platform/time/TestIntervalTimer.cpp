#include "PreciseTimer.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace std::chrono_literals;

/// Tests wait for a time only without processing events, and it has then passed
/// for certain: no test depends on how busy the machine is.
class TestIntervalTimer : public QObject {
    Q_OBJECT

private slots:
    void ticksAgainAndAgain();
    void intervalOfNothingKeepsItStill();
    void disabledTimerDoesNotTick();
    void settingWhatItHasChangesNothing();
    void anotherIntervalStartsAnew();
    void intervalOfNothingStopsARunningTimer();
    void missedTicksComeAsOne();
    void preciseTimerIsNeverEarly();
    void preciseTimerStartsAnewWhenEnabledAnew();

private:
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
    PreciseTimer timer;
    QSignalSpy ticks(&timer, &IntervalTimer::tick);
    timer.setInterval(1ms);
    timer.setEnabled(true);
    QVERIFY(timer.isEnabled());
    QCOMPARE(timer.interval(), 1ms);
    QTRY_VERIFY(ticks.count() >= 5);
}

void TestIntervalTimer::intervalOfNothingKeepsItStill()
{
    PreciseTimer timer;
    QSignalSpy ticks(&timer, &IntervalTimer::tick);
    timer.setEnabled(true);
    letTimePass();
    QCOMPARE(ticks.count(), 0);
    QVERIFY(timer.isEnabled());

    timer.setInterval(1ms);
    QTRY_VERIFY(ticks.count() >= 1);
}

void TestIntervalTimer::disabledTimerDoesNotTick()
{
    PreciseTimer timer;
    QSignalSpy ticks(&timer, &IntervalTimer::tick);
    timer.setInterval(1ms);
    letTimePass();
    QCOMPARE(ticks.count(), 0);

    timer.setEnabled(true);
    QTRY_VERIFY(ticks.count() >= 1);
    timer.setEnabled(false);
    ticks.clear();
    letTimePass();
    QCOMPARE(ticks.count(), 0);
}

void TestIntervalTimer::settingWhatItHasChangesNothing()
{
    PreciseTimer timer;
    timer.setInterval(50ms);
    timer.setEnabled(true);
    QThread::msleep(60);
    timer.setInterval(50ms);
    timer.setEnabled(true);
    // If it had been restarted, it would be due in 50 ms.
    QVERIFY(isDue(timer));
}

void TestIntervalTimer::anotherIntervalStartsAnew()
{
    PreciseTimer timer;
    QSignalSpy ticks(&timer, &IntervalTimer::tick);
    timer.setInterval(20ms);
    timer.setEnabled(true);
    QThread::msleep(30);
    timer.setInterval(3600000ms);
    letTimePass();
    QCOMPARE(ticks.count(), 0);
}

void TestIntervalTimer::intervalOfNothingStopsARunningTimer()
{
    PreciseTimer timer;
    timer.setInterval(1ms);
    timer.setEnabled(true);
    QSignalSpy ticks(&timer, &IntervalTimer::tick);
    QTRY_VERIFY(ticks.count() >= 1);
    timer.setInterval(0ms);
    ticks.clear();
    letTimePass();
    QCOMPARE(ticks.count(), 0);
}

void TestIntervalTimer::missedTicksComeAsOne()
{
#ifdef Q_OS_WIN
    QSKIP("A thread of the system's tells of each tick there, in its own time.");
#endif
    PreciseTimer timer;
    QSignalSpy ticks(&timer, &IntervalTimer::tick);
    timer.setInterval(50ms);
    timer.setEnabled(true);
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

QTEST_GUILESS_MAIN(TestIntervalTimer)
#include "TestIntervalTimer.moc"
