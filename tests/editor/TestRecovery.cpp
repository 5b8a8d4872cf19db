#include "FakeTimer.h"
#include "Files.h"
#include "ProgrammeDocument.h"
#include "Recovery.h"
#include "RecoveryFile.h"
#include "RecoveryFolder.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

class TestRecovery : public QObject {
    Q_OBJECT
private slots:
    void init();
    void unmodifiedDocumentHasNoFile();
    void firstEditIsWrittenAtOnce();
    void editsThatFollowAreWrittenTogetherAtTheTick();
    void editAfterATickWithoutEditsIsWrittenAtOnce();
    void savingRemovesTheFile();
    void undoingAllRemovesTheFile();
    void closingRemovesTheFile();
    void keptFileHasTheLastEditAndStays();
    void recoveredDocumentIsWrittenBeforeItIsEdited();
    void everythingIsWritten();
    void folderThatCannotBeWrittenIsToldOnce();
    void failedWritingIsTriedAgain();
    void keptFileOfASessionThatGoesOnIsRemoved();

private:
    QStringList filesIn(const QString& pattern) const
    {
        return QDir(m_path).entryList({pattern}, QDir::Files);
    }
    std::optional<UnsavedWork> written() const
    {
        const QStringList files = filesIn(u"*.json"_s);
        return files.size() == 1
                   ? RecoveryFile::read(contentsOf(m_path + u'/' + files.constFirst()))
                   : std::nullopt;
    }
    void edit(quint8 hour)
    {
        Programme programme = m_document->programme();
        programme.blocks[0].Alarms[0].Hour = hour;
        m_document->edit(programme);
    }
    int writtenHour() const
    {
        return written() ? written()->programme.blocks[0].Alarms[0].Hour : -1;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::unique_ptr<ProgrammeDocument> m_document;
    std::unique_ptr<FakeTimer> m_timer;
    std::unique_ptr<Recovery> m_recovery;
};

void TestRecovery::init()
{
    m_recovery.reset();
    m_folder = std::make_unique<QTemporaryDir>();
    // It does not exist yet.
    m_path = m_folder->filePath(u"a/recovery"_s);
    m_timer = std::make_unique<FakeTimer>();
    m_document = std::make_unique<ProgrammeDocument>(ClockModel::Hct7300);
    m_recovery = std::make_unique<Recovery>(*m_document, m_path, *m_timer);
}

void TestRecovery::unmodifiedDocumentHasNoFile()
{
    QVERIFY(!QDir(m_path).exists());
    QVERIFY(!m_timer->isRunning());
}

void TestRecovery::firstEditIsWrittenAtOnce()
{
    edit(1);
    QCOMPARE(writtenHour(), 1);
    QCOMPARE(m_timer->interval(), std::chrono::milliseconds(2000));
}

void TestRecovery::editsThatFollowAreWrittenTogetherAtTheTick()
{
    edit(1);
    edit(12);
    edit(13);
    QCOMPARE(writtenHour(), 1);
    QVERIFY(m_timer->fire());
    QCOMPARE(writtenHour(), 13);
    QVERIFY(m_timer->isRunning());
}

void TestRecovery::editAfterATickWithoutEditsIsWrittenAtOnce()
{
    edit(1);
    QVERIFY(m_timer->fire());
    QVERIFY(!m_timer->isRunning());
    edit(2);
    QCOMPARE(writtenHour(), 2);
}

void TestRecovery::savingRemovesTheFile()
{
    edit(1);
    edit(2);
    QVERIFY(m_document->saveAs(m_folder->filePath(u"a.hct"_s)).isSaved());
    QCOMPARE(filesIn(u"*"_s), QStringList());
    m_timer->fire();
    QCOMPARE(filesIn(u"*"_s), QStringList());
}

void TestRecovery::undoingAllRemovesTheFile()
{
    edit(1);
    m_document->undoStack().undo();
    QCOMPARE(filesIn(u"*"_s), QStringList());
    m_document->undoStack().redo();
    m_timer->fire();
    QCOMPARE(writtenHour(), 1);
}

void TestRecovery::closingRemovesTheFile()
{
    edit(1);
    m_recovery.reset();
    QCOMPARE(filesIn(u"*"_s), QStringList());
    QVERIFY(!m_timer->isRunning());
}

void TestRecovery::keptFileHasTheLastEditAndStays()
{
    edit(8);
    edit(9);
    m_recovery->keep();
    m_recovery.reset();
    QCOMPARE(writtenHour(), 9);
}

void TestRecovery::recoveredDocumentIsWrittenBeforeItIsEdited()
{
    UnsavedWork work;
    work.programme.blocks[0].Mode = 3;
    m_document->recover(work);
    QVERIFY(written() == work);
    // The same when it is recovered first.
    m_recovery.reset();
    m_recovery = std::make_unique<Recovery>(*m_document, m_path, *m_timer);
    QVERIFY(written() == work);
}

void TestRecovery::everythingIsWritten()
{
    const QString path = writeFile(m_folder->filePath(u"ñ.hct"_s), "nothing");
    QVERIFY(m_document->open(path, ClockModel::Hct7300).isOpen());
    edit(7);
    QVERIFY(written() == m_document->unsavedWork());
    QCOMPARE(written()->path, path);
    QVERIFY(written()->isMisread);
}

void TestRecovery::folderThatCannotBeWrittenIsToldOnce()
{
    writeFile(m_folder->filePath(u"a"_s), "no folder");
    const QSignalSpy failed(m_recovery.get(), &Recovery::failed);
    edit(1);
    edit(2);
    QVERIFY(m_timer->fire());
    QCOMPARE(failed.size(), 1);
    QVERIFY(QFile::remove(m_folder->filePath(u"a"_s)));
    edit(3);
    QVERIFY(m_timer->fire());
    QCOMPARE(writtenHour(), 3);
    QCOMPARE(failed.size(), 1);
}

void TestRecovery::failedWritingIsTriedAgain()
{
    writeFile(m_folder->filePath(u"a"_s), "no folder");
    edit(1);
    QVERIFY(!m_recovery->writeNow());
    QVERIFY(QFile::remove(m_folder->filePath(u"a"_s)));
    QVERIFY(m_timer->fire());
    QCOMPARE(writtenHour(), 1);
    QVERIFY(m_recovery->writeNow());
    QVERIFY(m_timer->fire());
    QVERIFY(!m_timer->isRunning());
}

void TestRecovery::keptFileOfASessionThatGoesOnIsRemoved()
{
    edit(1);
    m_recovery->keep();
    edit(2);
    m_recovery.reset();
    QCOMPARE(filesIn(u"*"_s), QStringList());
}

QTEST_GUILESS_MAIN(TestRecovery)
#include "TestRecovery.moc"
