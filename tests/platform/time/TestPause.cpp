#include "Pause.h"

#include <QElapsedTimer>
#include <QList>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <ctime>
#include <limits>

using namespace std::chrono_literals;

/// A clock of day with the resolution that a test needs.
class FineClock final : public ClockOfDay {
public:
    double seconds = 36000;

    QDateTime now() const override { return QDateTime(QDate(2026, 11, 21), QTime(10, 0)); }
    double secondsOfDay() const override { return seconds; }
};

class TestPause : public QObject {
    Q_OBJECT

private slots:
    void init();
    void differenceMustExceedTheWait();
    void shortSleepIsFollowedByTheRest();
    void pauseThatSpansMidnightEndsAtOnce();
    void clockPutRightMeanwhileEndsIt_data();
    void clockPutRightMeanwhileEndsIt();
    void clockPutBackALittleDoesNotHang();
    void waitOfNothingEndsAtTheNextReading();
    void waitThatIsNoNumberEndsAtOnce();
    void eventsWaitUntilThePauseIsOver();
    void eventsRunWhenTheyMay();
    void longPauseLooksAtTheClockEverySecond();
    void realPauseLastsItsTimeAndBurnsNoCore_data();
    void realPauseLastsItsTimeAndBurnsNoCore();
    void clockOfDayIsFinerThanAMillisecond();

private:
    FineClock m_clock;
    QList<double> m_sleeps;
    /// The clock's time after each sleep. When the list is used up, each sleep lasts as long as
    /// asked.
    QList<double> m_readings;
    SystemPause m_pause{m_clock, [this](std::chrono::duration<double, std::milli> time) {
                            m_sleeps.append(time.count());
                            if (m_readings.isEmpty())
                                m_clock.seconds += time.count() / 1000;
                            else
                                m_clock.seconds = m_readings.takeFirst();
                        }};
};

void TestPause::init()
{
    m_clock.seconds = 36000;
    m_sleeps.clear();
    m_readings.clear();
}

void TestPause::differenceMustExceedTheWait()
{
    m_clock.seconds = 0;
    m_readings = {4.0, 4.0, 4.0001};
    m_pause.Wait(4000ms, false);
    QCOMPARE(m_sleeps.size(), 3);
}

void TestPause::shortSleepIsFollowedByTheRest()
{
    m_readings = {36000.001, 36000.0041};
    m_pause.Wait(4ms, false);
    QCOMPARE(m_sleeps.size(), 2);
    QVERIFY(qAbs(m_sleeps[0] - 4) < 0.001);
    QVERIFY(qAbs(m_sleeps[1] - 3) < 0.001);
}

void TestPause::pauseThatSpansMidnightEndsAtOnce()
{
    m_clock.seconds = 86399.999;
    m_readings = {0.0005};
    m_pause.Wait(50ms, false);
    QCOMPARE(m_sleeps.size(), 1);
}

void TestPause::clockPutRightMeanwhileEndsIt_data()
{
    QTest::addColumn<double>("reading");
    QTest::newRow("an hour back") << 32400.0;
    QTest::newRow("an hour on") << 39600.0;
}

void TestPause::clockPutRightMeanwhileEndsIt()
{
    QFETCH(double, reading);
    m_readings = {reading};
    m_pause.Wait(50ms, false);
    QCOMPARE(m_sleeps.size(), 1);
}

void TestPause::clockPutBackALittleDoesNotHang()
{
    m_readings = {35999.998};
    m_pause.Wait(4ms, false);
    QVERIFY(m_clock.seconds > 36000.004 || m_clock.seconds < 35999.996);
    QVERIFY(m_sleeps.size() < 10);
}

void TestPause::waitOfNothingEndsAtTheNextReading()
{
    m_pause.Wait(0ms, false);
    QCOMPARE(m_sleeps.size(), 1);
    QVERIFY(m_sleeps[0] < 0.1);
}

void TestPause::waitThatIsNoNumberEndsAtOnce()
{
    m_pause.Wait(Pause::Milliseconds(std::numeric_limits<float>::quiet_NaN()), false);
    QVERIFY(m_sleeps.isEmpty());
}

void TestPause::eventsWaitUntilThePauseIsOver()
{
    bool ran = false;
    QTimer::singleShot(0, this, [&] { ran = true; });
    m_pause.Wait(4ms, false);
    QVERIFY(!ran);
    QTRY_VERIFY(ran);
}

void TestPause::eventsRunWhenTheyMay()
{
    // Only an event changes the clock.
    QTimer::singleShot(0, this, [&] {
        m_clock.seconds += 0.003;
        QTimer::singleShot(0, this, [&] { m_clock.seconds += 0.003; });
    });
    m_pause.Wait(4ms, true);
    QVERIFY(m_clock.seconds > 36000.005);
    QVERIFY(m_sleeps.isEmpty());
}

void TestPause::realPauseLastsItsTimeAndBurnsNoCore_data()
{
    QTest::addColumn<bool>("letEventsRun");
    QTest::newRow("thread held") << false;
    QTest::newRow("events run") << true;
}

void TestPause::longPauseLooksAtTheClockEverySecond()
{
    m_pause.Wait(2500ms, false);
    QCOMPARE(m_sleeps.mid(0, 3), (QList<double>{1000, 1000, 500}));
}

void TestPause::realPauseLastsItsTimeAndBurnsNoCore()
{
    QFETCH(bool, letEventsRun);
    const SystemClockOfDay clock;
    SystemPause pause(clock);
    QElapsedTimer elapsed;
    elapsed.start();
    const std::clock_t before = std::clock();
    pause.Wait(200ms, letEventsRun);
    // std::clock is processor time, except on Windows, where it goes on during sleep.
    [[maybe_unused]] const double burnt =
        static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    // The clock of day may be adjusted a little against the clock used here.
    QVERIFY(elapsed.nsecsElapsed() > 199'000'000);
#ifndef Q_OS_WIN
    QVERIFY2(burnt < 0.1, QByteArray::number(burnt));
#endif
}

void TestPause::clockOfDayIsFinerThanAMillisecond()
{
    const SystemClockOfDay clock;
    bool finer = false;
    for (int reading = 0; reading < 1000 && !finer; ++reading) {
        const double inMilliseconds = clock.secondsOfDay() * 1000;
        finer = qAbs(inMilliseconds - std::round(inMilliseconds)) > 0.01;
    }
    QVERIFY(finer);

    const double before = clock.now().time().msecsSinceStartOfDay() / 1000.0;
    const double between = clock.secondsOfDay();
    const double after = clock.now().time().msecsSinceStartOfDay() / 1000.0 + 0.001;
    QVERIFY((before <= between && between <= after) || after < before);
}

QTEST_GUILESS_MAIN(TestPause)
#include "TestPause.moc"
