#include "Files.h"
#include "ProgrammeFile.h"
#include "ProgrammeLines.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

/// The file on the disk: what saving leaves there, and which files are no programmes.
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
    void numberEndsAtTheBound_data();
    void numberEndsAtTheBound();
    void nothingPastTheBoundIsRead();
};

void TestProgrammeFile::emptyFileChangesNothing()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"vacío.hct"_s);
    writeFile(path, QByteArray());
    Programme programme = allNines(hct7300);
    QVERIFY(ProgrammeFile::load(path, programme, hct7300));
    QVERIFY(programme == allNines(hct7300));
}

void TestProgrammeFile::savedFileHasTheTextAndLoadsAgain()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"niño y señal.hct"_s);
    Programme programme = allNines(hct7200);
    QVERIFY(ProgrammeFile::save(path, programme, hct7200));
    QVERIFY(contentsOf(path).startsWith("--AVISOS 1--\r\n9\r\n1\r\n9\r\n9\r\n9\r\n"));
    Programme loaded;
    for (AlarmBlock& block : loaded.blocks) {
        block.Duration = 9;
        block.Mode = 1;
    }
    QVERIFY(ProgrammeFile::load(path, loaded, hct7200));
    QVERIFY(loaded == programme);
}

void TestProgrammeFile::savingReplacesALongerFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.hct"_s);
    writeFile(path, QByteArray(10000, 'x'));
    QVERIFY(ProgrammeFile::save(path, Programme(), hct7200));
    QCOMPARE(contentsOf(path), ProgrammeLines().text());
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{u"a.hct"_s});
}

void TestProgrammeFile::failedSaveLeavesTheOldFile()
{
    const QTemporaryDir folder;
    // Nobody, not even root, can replace a directory of that name by a file.
    const QString taken = folder.filePath(u"a.hct"_s);
    QVERIFY(QDir().mkpath(taken + u"/dentro"_s));
    QVERIFY(!ProgrammeFile::save(taken, Programme(), hct7200));
    QVERIFY(QFileInfo(taken + u"/dentro"_s).isDir());
    QVERIFY(!ProgrammeFile::save(folder.filePath(u"no/hay/a.hct"_s), Programme(), hct7200));
}

void TestProgrammeFile::missingFileAndDirectoryChangeNothing()
{
    const QTemporaryDir folder;
    Programme programme = allNines(hct7200);
    QVERIFY(!ProgrammeFile::load(folder.filePath(u"no hay.hct"_s), programme, hct7200));
    QVERIFY(!ProgrammeFile::load(folder.path(), programme, hct7200));
    QVERIFY(!ProgrammeFile::load(QString(), programme, hct7200));
    QVERIFY(programme == allNines(hct7200));
}

void TestProgrammeFile::endlessDeviceIsNotRead()
{
    Programme programme = allNines(hct7200);
    QVERIFY(!ProgrammeFile::load(u"/dev/zero"_s, programme, hct7200));
    QVERIFY(programme == allNines(hct7200));
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
    Programme programme = allNines(hct7200);
    QVERIFY(ProgrammeFile::load(path, programme, hct7200));
    const int expected = start.size() > 1 ? 1 : 9;
    QCOMPARE(int{programme.table.vacations[7].EndMonth}, expected);
}

void TestProgrammeFile::numberEndsAtTheBound_data()
{
    QTest::addColumn<int>("headerSize");
    QTest::addColumn<int>("duration");
    QTest::newRow("its last digit is the last byte") << 1024 * 1024 - 3 << 27;
    QTest::newRow("its last digit is one byte over") << 1024 * 1024 - 2 << 2;
    QTest::newRow("its first digit is one byte over") << 1024 * 1024 - 1 << 9;
}

void TestProgrammeFile::numberEndsAtTheBound()
{
    QFETCH(int, headerSize);
    const QTemporaryDir folder;
    const QString path =
        writeFile(folder.filePath(u"grande.hct"_s), QByteArray(headerSize, '-') + "\n27");
    Programme programme = allNines(hct7300);
    QVERIFY(ProgrammeFile::load(path, programme, hct7300));
    QTEST(int{programme.blocks[0].Duration}, "duration");
}

void TestProgrammeFile::nothingPastTheBoundIsRead()
{
    const QTemporaryDir folder;
    const QByteArray header(1024 * 1024, '-');
    const QString path = writeFile(folder.filePath(u"grande.hct"_s),
                                   header + "\r\n" + QByteArray("1\r\n").repeated(362));
    Programme programme = allNines(hct7200);
    QVERIFY(ProgrammeFile::load(path, programme, hct7200));
    QVERIFY(programme == allNines(hct7200));
}

QTEST_GUILESS_MAIN(TestProgrammeFile)
#include "TestProgrammeFile.moc"
