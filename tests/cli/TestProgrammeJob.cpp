#include "CommonOptions.h"
#include "Console.h"
#include "Files.h"
#include "ProgrammeLines.h"
#include "ProgrammeVerifyJob.h"
#include "World.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// How the jobs with the programme of a clock fail. The test plays the clock.
class TestProgrammeJob : public QObject {
    Q_OBJECT
private slots:
    void portThatIsLostIsLeftToTheRunToTell();
    void endOfTheConnectionIsLeftToTheRunToTell();

private:
    const QTemporaryDir m_folder;
    World m_world;
    Console m_console{Console::Form::Text, Console::Notes::Quiet};
    const CommonOptions m_options{};
};

void TestProgrammeJob::portThatIsLostIsLeftToTheRunToTell()
{
    Connected connected(m_world);
    ProgrammeVerifyJob job(
        connected.session, m_console, m_options,
        ProgrammeInput(writeFile(m_folder.filePath(u"a.hct"_s), ProgrammeLines().text())));
    const QSignalSpy finished(&job, &ClockJob::finished);
    job.begin();
    m_world.nextRequest();
    m_world.serie.vanish();
    QVERIFY(m_world.tmrTemporizador.fire());
    for (int attempt = 0; attempt < 20; ++attempt)
        m_world.nextRequest();
    QCOMPARE(finished.count(), 0);
}

void TestProgrammeJob::endOfTheConnectionIsLeftToTheRunToTell()
{
    Connected connected(m_world);
    ProgrammeVerifyJob job(
        connected.session, m_console, m_options,
        ProgrammeInput(writeFile(m_folder.filePath(u"b.hct"_s), ProgrammeLines().text())));
    const QSignalSpy finished(&job, &ClockJob::finished);
    job.begin();
    m_world.nextRequest();
    connected.session.workflow().Desconectar();
    QCoreApplication::processEvents();
    QCOMPARE(finished.count(), 0);
}

QTEST_GUILESS_MAIN(TestProgrammeJob)
#include "TestProgrammeJob.moc"
