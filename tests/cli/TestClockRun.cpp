#include "ClockRun.h"
#include "CommonOptions.h"
#include "Console.h"
#include "World.h"

#include <QSignalSpy>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

/// What the job of a run has been told.
struct Diary {
    int begun = 0;
    int abandoned = 0;
};

/// A job that the test ends.
class HeldJob final : public ClockJob {
    Q_OBJECT
public:
    explicit HeldJob(Diary& diary) : m_diary(diary) {}

    void begin() override { ++m_diary.begun; }
    QString abandon() override
    {
        ++m_diary.abandoned;
        return u"Queda la mitad."_s;
    }

private:
    Diary& m_diary;
};

} // namespace

/// The end of a run, of which there is one, whatever happens together with it. The test plays the
/// clock.
class TestClockRun : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void jobBeginsWhenTheClockHasSentItsData();
    void secondSignalChangesNothing();
    void portLostAfterTheJobIsNoFailure();
    void signalAfterTheJobIsNoFailure();
    void otherDeviceIsRefusedOnce();

private:
    void connectTo(const QByteArray& block);
    QList<ExitStatus> statuses() const;

    std::unique_ptr<World> m_world;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<ClockRun> m_run;
    std::unique_ptr<QSignalSpy> m_ended;
    Console m_console{Console::Form::Text, Console::Notes::Quiet};
    const CommonOptions m_options{};
    ClockJob* m_job = nullptr;
    Diary m_diary;
};

void TestClockRun::init()
{
    m_diary = {};
    m_world = std::make_unique<World>();
    m_session = std::make_unique<Session>(m_world->environment(), m_world->log);
    m_run = std::make_unique<ClockRun>(*m_session, m_console, m_options,
                                       [this](Session&, Console&, const CommonOptions&) {
                                           auto job = std::make_unique<HeldJob>(m_diary);
                                           m_job = job.get();
                                           return job;
                                       });
    m_ended = std::make_unique<QSignalSpy>(m_run.get(), &ClockRun::ended);
    m_run->start();
}

void TestClockRun::cleanup()
{
    m_ended.reset();
    m_run.reset();
    m_session.reset();
    m_world.reset();
}

void TestClockRun::connectTo(const QByteArray& block)
{
    m_world->nextRequest();
    m_world->answer(QByteArray::fromHex("0200"));
    m_world->nextRequest();
    m_world->answer(block);
}

QList<ExitStatus> TestClockRun::statuses() const
{
    QCoreApplication::processEvents();
    QList<ExitStatus> all;
    for (const QList<QVariant>& arguments : *m_ended)
        all += arguments.first().value<ExitStatus>();
    return all;
}

void TestClockRun::jobBeginsWhenTheClockHasSentItsData()
{
    QCOMPARE(m_diary.begun, 0);
    connectTo(LinkFixture::fullBlock());
    QCOMPARE(m_diary.begun, 1);
}

void TestClockRun::secondSignalChangesNothing()
{
    connectTo(LinkFixture::fullBlock());
    m_run->interrupt(SIGINT);
    m_run->interrupt(SIGTERM);
    QCOMPARE(statuses(), QList<ExitStatus>{endedBySignal(SIGINT)});
    QCOMPARE(m_diary.abandoned, 1);
}

void TestClockRun::portLostAfterTheJobIsNoFailure()
{
    connectTo(LinkFixture::fullBlock());
    emit m_job->finished(ExitStatus::Done);
    m_world->serie.vanish();
    QCOMPARE(statuses(), QList<ExitStatus>{ExitStatus::Done});
    QCOMPARE(m_diary.abandoned, 0);
}

void TestClockRun::signalAfterTheJobIsNoFailure()
{
    connectTo(LinkFixture::fullBlock());
    emit m_job->finished(ExitStatus::Done);
    QCOMPARE(statuses(), QList<ExitStatus>{ExitStatus::Done});
    m_run->interrupt(SIGINT);
    QCOMPARE(statuses(), QList<ExitStatus>{ExitStatus::Done});
    QCOMPARE(m_diary.abandoned, 0);
}

void TestClockRun::otherDeviceIsRefusedOnce()
{
    QByteArray block = LinkFixture::fullBlock();
    block[3] = 12;
    connectTo(block);
    m_world->nextRequest();
    m_world->answer(LinkFixture::fullBlock());
    m_world->serie.vanish();
    QCOMPARE(statuses(), QList<ExitStatus>{ExitStatus::Refused});
    QCOMPARE(m_diary.begun, 0);
}

QTEST_GUILESS_MAIN(TestClockRun)
#include "TestClockRun.moc"
