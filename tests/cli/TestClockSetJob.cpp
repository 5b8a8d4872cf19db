#include "ClockSetJob.h"
#include "CommonOptions.h"
#include "Console.h"
#include "World.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// How `clock set` ends. The test plays the clock.
class TestClockSetJob : public QObject {
    Q_OBJECT
private slots:
    void clockWithoutADateIsSet();
    void clockWhoseDataCannotBeReadAfterwardsIsLeft();
    void failuresBeforeTheClockTakesTheTimeDoNotCount();

private:
    /// A clock that shows day 45.
    static QByteArray blockWithoutADate();
    static QByteArray refusedBlock();
    /// Lets the session ask for general data, which the clock answers so.
    void answerPoll(const QByteArray& block);
    void takeTime();

    World m_world;
    const CommonOptions m_options{};
};

QByteArray TestClockSetJob::blockWithoutADate()
{
    QByteArray block = LinkFixture::fullBlock();
    block[9] = 45;
    return block;
}

QByteArray TestClockSetJob::refusedBlock()
{
    QByteArray block = LinkFixture::fullBlock();
    block[4] = 1;
    return block;
}

void TestClockSetJob::answerPoll(const QByteArray& block)
{
    m_world.nextRequest();
    m_world.answer(block);
}

void TestClockSetJob::takeTime() { answerPoll(QByteArray::fromHex("0100")); }

void TestClockSetJob::clockWithoutADateIsSet()
{
    Connected connected(m_world);
    answerPoll(blockWithoutADate());
    Console console(Console::Form::Text, Console::Notes::Quiet);
    ClockSetJob job(connected.session, console, m_options, {.at = {}, .ifOffBy = 60});
    const QSignalSpy finished(&job, &ClockJob::finished);
    job.begin();
    takeTime();
    answerPoll(LinkFixture::fullBlock());
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().value<ExitStatus>(), ExitStatus::Done);
}

void TestClockSetJob::clockWhoseDataCannotBeReadAfterwardsIsLeft()
{
    Connected connected(m_world);
    Console console(Console::Form::Text, Console::Notes::Quiet);
    ClockSetJob job(connected.session, console, m_options, {});
    const QSignalSpy finished(&job, &ClockJob::finished);
    job.begin();
    takeTime();
    answerPoll(refusedBlock());
    answerPoll(refusedBlock());
    QCOMPARE(finished.count(), 0);
    answerPoll(refusedBlock());
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().value<ExitStatus>(), ExitStatus::Refused);
}

void TestClockSetJob::failuresBeforeTheClockTakesTheTimeDoNotCount()
{
    Connected connected(m_world);
    Console console(Console::Form::Text, Console::Notes::Quiet);
    answerPoll(refusedBlock());
    answerPoll(refusedBlock());
    ClockSetJob job(connected.session, console, m_options, {});
    const QSignalSpy finished(&job, &ClockJob::finished);
    job.begin();
    takeTime();
    answerPoll(refusedBlock());
    QCOMPARE(finished.count(), 0);
}

QTEST_GUILESS_MAIN(TestClockSetJob)
#include "TestClockSetJob.moc"
