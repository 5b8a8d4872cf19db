#include "ExchangeUnderTest.h"
#include "FarEnd.h"
#include "RecordingLog.h"
#include "Session.h"
#include "SystemEnvironment.h"
#include "TickTimer.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

namespace {

/// A session on this machine's port, tick and pauses, and the clock at the far end of its line. The
/// clock measures from before it answers until it has the next request.
struct Course {
    explicit Course(int requestsWanted)
    {
        QObject::connect(&clock, &FarEnd::requested, &clock,
                         [this, requestsWanted](const QByteArray& request) {
                             nanoseconds.append(time.nsecsElapsed());
                             // The last one stays without an answer: nothing comes after it.
                             if (nanoseconds.size() == requestsWanted)
                                 return session->crono().setTimerEnabled(false);
                             time.start();
                             clock.send(ExchangeUnderTest::goodAnswerTo(request));
                         });
        qputenv("HCT_COM1", clock.device().toLatin1());
        machine = std::make_unique<SystemEnvironment>();
        session = std::make_unique<Session>(machine->environment(), log);
        session->start();
        QSignalSpy wakes(&session->environment().tmrCrono, &TickTimer::wake);
        time.start();
        session->workflow().Conectar(false);
        QTRY_COMPARE(nanoseconds.size(), requestsWanted);
        wakeUps = static_cast<int>(wakes.count());
        session->workflow().unload();
    }

    RecordingLog log;
    FarEnd clock;
    QElapsedTimer time;
    /// Until each request.
    QList<qint64> nanoseconds;
    /// Of the tick timer.
    int wakeUps = 0;
    std::unique_ptr<SystemEnvironment> machine;
    std::unique_ptr<Session> session;
};

constexpr qint64 millisecond = 1'000'000;

} // namespace

/// How soon requests come, seen from the far end. They may come later.
class TestPausesOverTheLine : public QObject {
    Q_OBJECT
private slots:
    void identificationComesAfterTenTicksAndBothPauses();
    void nextRequestComesAfterTenTicksAndAPause();
    void tickTimerWakesTheProgramOnceARequest();
};

void TestPausesOverTheLine::identificationComesAfterTenTicksAndBothPauses()
{
    const Course course(1);
    // The first tick comes after a part of its time.
    QVERIFY(course.nanoseconds.first() >= (9 + 4 + 50) * millisecond);
}

void TestPausesOverTheLine::nextRequestComesAfterTenTicksAndAPause()
{
    const Course course(6);
    for (const qint64 time : course.nanoseconds)
        QVERIFY2(time >= (9 + 4) * millisecond, QByteArray::number(time));
}

void TestPausesOverTheLine::tickTimerWakesTheProgramOnceARequest()
{
    const Course course(6);
    QCOMPARE(course.wakeUps, static_cast<int>(course.nanoseconds.size()));
}

QTEST_GUILESS_MAIN(TestPausesOverTheLine)
#include "TestPausesOverTheLine.moc"
