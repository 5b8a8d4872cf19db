#include "Files.h"
#include "ProgrammeFile.h"
#include "ProgrammeLines.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

constexpr auto first = ClockModel::HCT7200;
constexpr auto second = ClockModel::HCT7300;

/// The file on the disk: what a save leaves there, and what is no programme's file.
class TestProgrammeFile : public QObject {
    Q_OBJECT
private slots:
    void emptyFileChangesNothing();
    void savedFileHasTheTextAndLoadsAgain();
    void savingReplacesALongerFile();
    void failedSaveLeavesTheOldFile();
    void missingFileAndDirectoryChangeNothing();
    void endlessDeviceIsNotRead();
    void terabyteDoesNotHang_data();
    void terabyteDoesNotHang();
    void nothingPastTheBoundIsRead();
};

void TestProgrammeFile::emptyFileChangesNothing()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"vacío.hct"_s);
    writeFile(path, QByteArray());
    Programme programme = allNines(second);
    QVERIFY(ProgrammeFile::load(path, programme, second));
    QVERIFY(programme == allNines(second));
}

void TestProgrammeFile::savedFileHasTheTextAndLoadsAgain()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"niño y señal.hct"_s);
    Programme programme = allNines(first);
    QVERIFY(ProgrammeFile::save(path, programme, first));
    QVERIFY(contentsOf(path).startsWith("--AVISOS 1--\r\n9\r\n1\r\n9\r\n9\r\n9\r\n"));
    Programme loaded;
    for (AlarmBlock& block : loaded.blocks) {
        block.Duration = 9;
        block.Mode = 1;
    }
    QVERIFY(ProgrammeFile::load(path, loaded, first));
    QVERIFY(loaded == programme);
}

void TestProgrammeFile::savingReplacesALongerFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.hct"_s);
    writeFile(path, QByteArray(10000, 'x'));
    QVERIFY(ProgrammeFile::save(path, Programme(), first));
    QCOMPARE(contentsOf(path), ProgrammeLines().text());
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{u"a.hct"_s});
}

void TestProgrammeFile::failedSaveLeavesTheOldFile()
{
    const QTemporaryDir folder;
    // A directory in the way of the name can be written over by nobody, not even by root.
    const QString taken = folder.filePath(u"a.hct"_s);
    QVERIFY(QDir().mkpath(taken + u"/dentro"_s));
    QVERIFY(!ProgrammeFile::save(taken, Programme(), first));
    QVERIFY(QFileInfo(taken + u"/dentro"_s).isDir());
    QVERIFY(!ProgrammeFile::save(folder.filePath(u"no/hay/a.hct"_s), Programme(), first));
}

void TestProgrammeFile::missingFileAndDirectoryChangeNothing()
{
    const QTemporaryDir folder;
    Programme programme = allNines(first);
    QVERIFY(!ProgrammeFile::load(folder.filePath(u"no hay.hct"_s), programme, first));
    QVERIFY(!ProgrammeFile::load(folder.path(), programme, first));
    QVERIFY(!ProgrammeFile::load(QString(), programme, first));
    QVERIFY(programme == allNines(first));
}

void TestProgrammeFile::endlessDeviceIsNotRead()
{
    Programme programme = allNines(first);
    QVERIFY(!ProgrammeFile::load(u"/dev/zero"_s, programme, first));
    QVERIFY(programme == allNines(first));
}

void TestProgrammeFile::terabyteDoesNotHang_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("one endless line") << QByteArray("1");
    QTest::newRow("a programme and then an endless line") << QByteArray("1\r\n").repeated(363);
}

void TestProgrammeFile::terabyteDoesNotHang()
{
    QFETCH(QByteArray, start);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"grande.hct"_s);
    writeFile(path, start);
    // The file is sparse; reading it to its end would take hours.
    QVERIFY(QFile::resize(path, 1'000'000'000'000));
    Programme programme = allNines(first);
    QVERIFY(ProgrammeFile::load(path, programme, first));
    const int expected = start.size() > 1 ? 1 : 9;
    QCOMPARE(int{programme.table.vacations[7].EndMonth}, expected);
}

void TestProgrammeFile::nothingPastTheBoundIsRead()
{
    const QTemporaryDir folder;
    const QByteArray header(1024 * 1024, '-');
    const QString path = writeFile(folder.filePath(u"grande.hct"_s),
                                   header + "\r\n" + QByteArray("1\r\n").repeated(362));
    Programme programme = allNines(first);
    QVERIFY(ProgrammeFile::load(path, programme, first));
    QVERIFY(programme == allNines(first));
}

QTEST_GUILESS_MAIN(TestProgrammeFile)
#include "TestProgrammeFile.moc"
