#include "Files.h"
#include "FullDisk.h"
#include "OrdinaryUser.h"
#include "WholeFile.h"

#include <QDir>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <cstdio>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Called with each file or folder that is synced. Returns the error for the call, or 0.
std::function<int(const QString& path)> synced;
/// Whether no file can be given another name.
bool renamingFails = false;

} // namespace

/// Replaces the function of the system.
extern "C" int fsync(int descriptor)
{
    const QString path = QFile::symLinkTarget(u"/proc/self/fd/%1"_s.arg(descriptor));
    if (const int error = synced ? synced(path) : 0) {
        errno = error;
        return -1;
    }
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

/// Replaces the function of the system that the toolkit calls.
extern "C" int rename(const char* from, const char* to) noexcept
{
    if (renamingFails) {
        errno = EIO;
        return -1;
    }
    return renameat(AT_FDCWD, from, AT_FDCWD, to);
}

class TestWholeFile : public QObject {
    Q_OBJECT
private slots:
    void fileIsReadUpToTheBound();
    void whatIsNoFileIsNotRead();
    void fileThatFailsIsNotRead();
    void fileWithoutPermissionIsNotRead();
    void longerFileIsReplaced();
    void whatIsNoFileIsNotReplaced();
    void fullDiskLeavesTheOldFile_data();
    void fullDiskLeavesTheOldFile();
    void fileThatCannotBeRenamedIsLeftAsItWas();
    void folderIsSyncedAfterTheRename();
    void folderOfALinkedFileIsTheOneThatIsSynced();
    void folderThatIsNotSyncedIsToldUnlessItsFileSystemCannot_data();
    void folderThatIsNotSyncedIsToldUnlessItsFileSystemCannot();
    void fileInAFolderThatCannotBeWrittenIsLeftAsItWas();
    void fileInAFolderThatCannotBeListedIsReplaced();
};

void TestWholeFile::fileIsReadUpToTheBound()
{
    const QTemporaryDir folder;
    const QString path = writeFile(folder.filePath(u"a"_s), "123456");
    QCOMPARE(WholeFile::read(path, 6).value(), QByteArray("123456"));
    QCOMPARE(WholeFile::read(path, 5).value(), QByteArray("12345"));
    QCOMPARE(WholeFile::read(writeFile(path, ""), 5).value(), QByteArray());
}

void TestWholeFile::whatIsNoFileIsNotRead()
{
    const QTemporaryDir folder;
    QVERIFY(!WholeFile::read(folder.filePath(u"none"_s), 5));
    QVERIFY(!WholeFile::read(folder.path(), 5));
    QVERIFY(!WholeFile::read(u"/dev/zero"_s, 5));
    const QString pipe = folder.filePath(u"pipe"_s);
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(!WholeFile::read(pipe, 5));
}

void TestWholeFile::fileThatFailsIsNotRead()
{
    // There is no memory at its first address.
    QVERIFY(!WholeFile::read(u"/proc/self/mem"_s, 10).has_value());
}

void TestWholeFile::fileWithoutPermissionIsNotRead()
{
    const QTemporaryDir folder;
    const OrdinaryUser ordinaryUser(folder.path());
    const QString path = writeFile(folder.filePath(u"a"_s), "secret");
    QVERIFY(QFile::setPermissions(path, QFile::WriteOwner));
    QVERIFY(!WholeFile::read(path, 10).has_value());
}

void TestWholeFile::longerFileIsReplaced()
{
    const QTemporaryDir folder;
    const QString path = writeFile(folder.filePath(u"a"_s), QByteArray(100'000, 'x'));
    QVERIFY(WholeFile::replace(path, "new"));
    QCOMPARE(contentsOf(path), QByteArray("new"));
}

void TestWholeFile::whatIsNoFileIsNotReplaced()
{
    const QTemporaryDir folder;
    QVERIFY(!WholeFile::replace(folder.path(), "new"));
    const QString pipe = folder.filePath(u"pipe"_s);
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(!WholeFile::replace(pipe, "new"));
    QVERIFY(QFileInfo::exists(pipe) && !QFileInfo(pipe).isFile());
}

void TestWholeFile::fullDiskLeavesTheOldFile_data()
{
    QTest::addColumn<int>("bytes");
    // The toolkit buffers up to 16 KiB.
    QTest::newRow("found out at the end") << 1000;
    QTest::newRow("found out in the middle") << 100'000;
}

void TestWholeFile::fullDiskLeavesTheOldFile()
{
    QFETCH(int, bytes);
    const QTemporaryDir folder;
    const QString path = writeFile(folder.filePath(u"a"_s), "old");
    bool replaced = true;
    {
        const FullDisk disk;
        replaced = WholeFile::replace(path, QByteArray(bytes, 'x'));
    }
    QVERIFY(!replaced);
    QCOMPARE(contentsOf(path), QByteArray("old"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{u"a"_s});
}

void TestWholeFile::fileThatCannotBeRenamedIsLeftAsItWas()
{
    const QTemporaryDir folder;
    const QString path = writeFile(folder.filePath(u"a"_s), "old");
    renamingFails = true;
    const auto restored = qScopeGuard([] { renamingFails = false; });
    QVERIFY(!WholeFile::replace(path, "new"));
    QCOMPARE(contentsOf(path), QByteArray("old"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{u"a"_s});
}

void TestWholeFile::folderIsSyncedAfterTheRename()
{
    const QTemporaryDir folder;
    const QString path = writeFile(folder.filePath(u"a"_s), "old");
    QStringList events;
    synced = [&](const QString& what) {
        events += what + u" when the file was "_s + QString::fromLatin1(contentsOf(path));
        return 0;
    };
    const auto restored = qScopeGuard([] { synced = nullptr; });
    QVERIFY(WholeFile::replace(path, "new"));
    QCOMPARE(events, QStringList{folder.path() + u" when the file was new"_s});
}

void TestWholeFile::folderOfALinkedFileIsTheOneThatIsSynced()
{
    const QTemporaryDir folder;
    const QTemporaryDir other;
    const QString path = writeFile(folder.filePath(u"a"_s), "old");
    const QString link = other.filePath(u"link"_s);
    QVERIFY(QFile::link(path, link));
    QStringList folders;
    synced = [&](const QString& what) {
        folders += what;
        return 0;
    };
    const auto restored = qScopeGuard([] { synced = nullptr; });
    QVERIFY(WholeFile::replace(link, "new"));
    QCOMPARE(folders, QStringList{folder.path()});
}

void TestWholeFile::folderThatIsNotSyncedIsToldUnlessItsFileSystemCannot_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("kept");
    QTest::newRow("the disk failed") << EIO << false;
    QTest::newRow("the file system syncs no folders") << EINVAL << true;
}

void TestWholeFile::folderThatIsNotSyncedIsToldUnlessItsFileSystemCannot()
{
    QFETCH(int, error);
    const QTemporaryDir folder;
    const QString path = writeFile(folder.filePath(u"a"_s), "old");
    synced = [&](const QString&) { return error; };
    const auto restored = qScopeGuard([] { synced = nullptr; });
    QTEST(WholeFile::replace(path, "new"), "kept");
}

void TestWholeFile::fileInAFolderThatCannotBeWrittenIsLeftAsItWas()
{
    const QTemporaryDir folder;
    const OrdinaryUser ordinaryUser(folder.path());
    const QString path = writeFile(folder.filePath(u"a"_s), "old");
    QVERIFY(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
    QVERIFY(QFileInfo(path).isWritable());
    const bool replaced = WholeFile::replace(path, "new");
    QVERIFY(QFile::setPermissions(folder.path(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY(!replaced);
    QCOMPARE(contentsOf(path), QByteArray("old"));
}

void TestWholeFile::fileInAFolderThatCannotBeListedIsReplaced()
{
    const QTemporaryDir folder;
    const OrdinaryUser ordinaryUser(folder.path());
    const QString path = writeFile(folder.filePath(u"a"_s), "old");
    QVERIFY(QFile::setPermissions(folder.path(), QFile::WriteOwner | QFile::ExeOwner));
    const bool replaced = WholeFile::replace(path, "new");
    QVERIFY(QFile::setPermissions(folder.path(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY(replaced);
    QCOMPARE(contentsOf(path), QByteArray("new"));
}

QTEST_GUILESS_MAIN(TestWholeFile)
#include "TestWholeFile.moc"
