#include "FileRegistry.h"
#include "Files.h"
#include "OrdinaryUser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <functional>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto user = Registry::RootKey::CurrentUser;
const QString key = u"Software\\Quorvex\\Lurimat\\Directo"_s;

RegistryValue text(const QByteArray& bytes) { return {RegistryValue::Text, bytes + '\0'}; }

/// Another program, which saves 500 times, twelve values in turn. Its exit code is the number of
/// values that did not stay as it had saved them, at most 255.
pid_t startSaving(const QString& path, const QString& prefix)
{
    const pid_t process = fork();
    if (process != 0)
        return process;
    FileRegistry registry(path);
    int lost = 0;
    for (int save = 0; save < 500; ++save) {
        const QString name = prefix + QString::number(save % 12);
        const auto before = registry.query(user, key, name);
        if (save >= 12 && before != text(QByteArray::number(save - 12)))
            ++lost;
        if (!registry.set(user, key, name, text(QByteArray::number(save))))
            ++lost;
    }
    _exit(std::min(lost, 255));
}

int exitCode(pid_t process)
{
    int status = 0;
    return waitpid(process, &status, 0) == process && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// What flock fails with, and how many times it does.
int lockFailure = 0;
int lockFailures = 0;
/// Runs once, before flock.
std::function<void()>& beforeLocking()
{
    static std::function<void()> function;
    return function;
}

bool isLocked(const QString& path)
{
    const int descriptor = open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
    const bool locked = descriptor >= 0 && flock(descriptor, LOCK_EX | LOCK_NB) != 0;
    close(descriptor);
    return locked;
}

} // namespace

/// In the place of the system's function, for file systems that cannot lock.
extern "C" int flock(int descriptor, int operation) noexcept
{
    if (const auto run = std::exchange(beforeLocking(), nullptr))
        run();
    if (lockFailures == 0)
        return static_cast<int>(syscall(SYS_flock, descriptor, operation));
    --lockFailures;
    errno = lockFailure;
    return -1;
}

class TestFileRegistryLock : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void twoProgramsThatSaveAtOnceLoseNothing();
    void lockThatIsHeldFailsTheWriteUntilItIsFree();
    void lockFileOfAKilledProgramIsTakenOver();
    void lockFileOfAnotherUserIsTakenOver();
    void lockFileThatIsALinkIsNotFollowed();
    void lockFileThatHasGoneMeanwhileIsLockedAnew();
    void fileSystemThatCannotLockIsWrittenWithoutALock_data();
    void fileSystemThatCannotLockIsWrittenWithoutALock();
    void interruptedLockIsTriedAgain();
    void holdKeepsOtherProgramsFromWriting();
    void holdIsRefusedWhileAnotherProgramHolds();
    void holdWhereNothingCanBeWrittenLeavesTheFailureToTheWrite();

private:
    QString path() const { return m_folder->filePath(u"registry.reg"_s); }
    QString lockPath() const { return path() + u".lock"_s; }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestFileRegistryLock::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TestFileRegistryLock::cleanup()
{
    QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    lockFailures = 0;
}

void TestFileRegistryLock::twoProgramsThatSaveAtOnceLoseNothing()
{
    const pid_t first = startSaving(path(), u"a"_s);
    const pid_t second = startSaving(path(), u"b"_s);
    QCOMPARE(exitCode(first), 0);
    QCOMPARE(exitCode(second), 0);
}

void TestFileRegistryLock::lockThatIsHeldFailsTheWriteUntilItIsFree()
{
    writeFile(lockPath(), "");
    const int hungProgram = open(QFile::encodeName(lockPath()).constData(), O_RDONLY | O_CLOEXEC);
    QCOMPARE(flock(hungProgram, LOCK_EX), 0);
    FileRegistry registry(path());
    QVERIFY(!registry.set(user, key, u"Puerto"_s, text("3")));
    QVERIFY(!QFile::exists(path()));
    QVERIFY(QFile::exists(lockPath()));
    close(hungProgram);
    QVERIFY(registry.set(user, key, u"Puerto"_s, text("3")));
}

void TestFileRegistryLock::lockFileOfAKilledProgramIsTakenOver()
{
    writeFile(lockPath(), "");
    FileRegistry registry(path());
    QVERIFY(registry.set(user, key, u"Puerto"_s, text("3")));
    QVERIFY(!QFile::exists(lockPath()));
}

void TestFileRegistryLock::lockFileOfAnotherUserIsTakenOver()
{
    writeFile(lockPath(), "");
    QVERIFY(
        QFile::setPermissions(lockPath(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    const OrdinaryUser ordinaryUser(m_folder->path());
    FileRegistry registry(path());
    QVERIFY(registry.set(user, key, u"Puerto"_s, text("3")));
    QVERIFY(!QFile::exists(lockPath()));
}

void TestFileRegistryLock::lockFileThatIsALinkIsNotFollowed()
{
    const QString other = writeFile(m_folder->filePath(u"other"_s), "old");
    QVERIFY(QFile::link(other, lockPath()));
    FileRegistry registry(path());
    QVERIFY(registry.set(user, key, u"Puerto"_s, text("3")));
    QCOMPARE(QFile::symLinkTarget(lockPath()), other);
}

void TestFileRegistryLock::lockFileThatHasGoneMeanwhileIsLockedAnew()
{
    for (const bool anotherIsThere : {false, true}) {
        beforeLocking() = [&] {
            // Not deleted: its number would be used again.
            QFile::rename(lockPath(), path() + u".gone"_s);
            if (anotherIsThere)
                writeFile(lockPath(), "");
        };
        FileRegistry registry(path());
        const auto hold = registry.holdForSave();
        QVERIFY(isLocked(lockPath()));
        QFile::remove(path() + u".gone"_s);
    }
}

void TestFileRegistryLock::fileSystemThatCannotLockIsWrittenWithoutALock_data()
{
    QTest::addColumn<int>("failure");
    QTest::newRow("network file system without its lock service") << ENOLCK;
    QTest::newRow("not supported") << EOPNOTSUPP;
    QTest::newRow("not there") << ENOSYS;
    QTest::newRow("only for files that are open for writing") << EBADF;
}

void TestFileRegistryLock::fileSystemThatCannotLockIsWrittenWithoutALock()
{
    QFETCH(int, failure);
    lockFailure = failure;
    lockFailures = 2;
    FileRegistry registry(path());
    QVERIFY(registry.set(user, key, u"Puerto"_s, text("3")));
    QVERIFY(registry.holdForSave());
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
             QStringList(u"registry.reg"_s));
}

void TestFileRegistryLock::interruptedLockIsTriedAgain()
{
    lockFailure = EINTR;
    lockFailures = 3;
    FileRegistry registry(path());
    const auto hold = registry.holdForSave();
    QVERIFY(hold);
    QCOMPARE(lockFailures, 0);
    QVERIFY(isLocked(lockPath()));
}

void TestFileRegistryLock::holdKeepsOtherProgramsFromWriting()
{
    FileRegistry registry(path());
    auto hold = registry.holdForSave();
    for (const char* port : {"3", "4"}) {
        QVERIFY(registry.set(user, key, u"Puerto"_s, text(port)));
        QVERIFY(isLocked(lockPath()));
    }
    hold.reset();
    QVERIFY(!isLocked(lockPath()));
}

void TestFileRegistryLock::holdIsRefusedWhileAnotherProgramHolds()
{
    FileRegistry registry(path());
    FileRegistry ofAnotherProgram(path());
    auto hold = registry.holdForSave();
    QVERIFY(!ofAnotherProgram.holdForSave());
    hold.reset();
    QVERIFY(ofAnotherProgram.holdForSave());
}

void TestFileRegistryLock::holdWhereNothingCanBeWrittenLeavesTheFailureToTheWrite()
{
    const OrdinaryUser ordinaryUser(m_folder->path());
    writeFile(path(),
              "[HKEY_CURRENT_USER\\Software\\Quorvex\\Lurimat\\Directo]\n\"Puerto\"=\"4\"\n");
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner));
    FileRegistry registry(path());
    const auto hold = registry.holdForSave();
    QVERIFY(hold);
    QVERIFY(registry.set(user, key, u"Puerto"_s, text("4")));
    QVERIFY(!registry.set(user, key, u"Puerto"_s, text("5")));
}

QTEST_GUILESS_MAIN(TestFileRegistryLock)
#include "TestFileRegistryLock.moc"
