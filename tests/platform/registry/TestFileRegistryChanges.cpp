#include "FileRegistry.h"
#include "Files.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <functional>

#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto user = Registry::RootKey::CurrentUser;
const QString key = u"Software\\Quorvex\\Lurimat\\Directo"_s;
const QByteArray good = "[HKEY_CURRENT_USER\\Software\\Quorvex\\Lurimat\\Directo]\n"
                        "\"Puerto\"=\"4\"\n\"DTR\"=\"On\"\n"_ba;

/// Runs before each reading of a file; an error number that it returns fails the reading.
std::function<int()>& beforeReading()
{
    static std::function<int()> function;
    return function;
}

} // namespace

/// In the place of the system's function, which the toolkit calls.
extern "C" ssize_t read(int descriptor, void* buffer, size_t count)
{
    if (const int error = beforeReading() ? beforeReading()() : 0) {
        errno = error;
        return -1;
    }
    return syscall(SYS_read, descriptor, buffer, count);
}

/// A file that another program changes between the question for its size and the reading, or that
/// fails while it is read: saving would lose what was not read. And what is removed from a file.
class TestFileRegistryChanges : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { beforeReading() = nullptr; }

    void fileThatGrowsWhileItIsReadIsNotReplaced_data();
    void fileThatGrowsWhileItIsReadIsNotReplaced();
    void fileThatShrinksWhileItIsReadIsNotReplaced();
    void fileThatFailsWhileItIsReadIsNotReplaced_data();
    void fileThatFailsWhileItIsReadIsNotReplaced();
    void removedValueIsGone();
    void removingWhatIsNotThereWritesNothing();
    void removingFailsWhereTheFileCannotBeRead();

private:
    QString path() const { return m_folder.filePath(u"registry.reg"_s); }
    bool save() const
    {
        return FileRegistry(path()).set(user, key, u"RTS"_s, {RegistryValue::Text, "On"});
    }

    QTemporaryDir m_folder;
};

void TestFileRegistryChanges::fileThatGrowsWhileItIsReadIsNotReplaced_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("from nothing") << QByteArray();
    QTest::newRow("by a line") << good;
}

void TestFileRegistryChanges::fileThatGrowsWhileItIsReadIsNotReplaced()
{
    QFETCH(QByteArray, before);
    writeFile(path(), before);
    QByteArray content = before;
    beforeReading() = [&] {
        content += "; grown\n";
        QFile file(path());
        return file.open(QIODevice::Append) && file.write("; grown\n") == 8 ? 0 : EBADF;
    };
    QVERIFY(!save());
    beforeReading() = nullptr;
    QCOMPARE(contentsOf(path()), content);
}

void TestFileRegistryChanges::fileThatShrinksWhileItIsReadIsNotReplaced()
{
    QByteArray content = good;
    writeFile(path(), content);
    beforeReading() = [&] {
        content.chop(4);
        return QFile::resize(path(), content.size()) ? 0 : EBADF;
    };
    QVERIFY(!save());
    beforeReading() = nullptr;
    QCOMPARE(contentsOf(path()), content);
}

void TestFileRegistryChanges::fileThatFailsWhileItIsReadIsNotReplaced_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("with values") << good;
}

void TestFileRegistryChanges::fileThatFailsWhileItIsReadIsNotReplaced()
{
    QFETCH(QByteArray, content);
    writeFile(path(), content);
    beforeReading() = [] { return EIO; };
    QVERIFY(!save());
    beforeReading() = nullptr;
    QCOMPARE(contentsOf(path()), content);
}

void TestFileRegistryChanges::removedValueIsGone()
{
    writeFile(path(), good);
    QVERIFY(FileRegistry(path()).remove(user, key, u"puerto"_s));
    QVERIFY(!FileRegistry(path()).query(user, key, u"Puerto"_s));
    QCOMPARE(contentsOf(path()), "[HKEY_CURRENT_USER\\Software\\Quorvex\\Lurimat\\Directo]\n"
                                 "\"DTR\"=\"On\"\n"_ba);
}

void TestFileRegistryChanges::removingWhatIsNotThereWritesNothing()
{
    QFile::remove(path());
    QVERIFY(FileRegistry(path()).remove(user, key, u"Puerto"_s));
    QVERIFY(!QFile::exists(path()));
}

void TestFileRegistryChanges::removingFailsWhereTheFileCannotBeRead()
{
    writeFile(path(), good);
    beforeReading() = [] { return EIO; };
    QVERIFY(!FileRegistry(path()).remove(user, key, u"Puerto"_s));
    beforeReading() = nullptr;
    QCOMPARE(contentsOf(path()), good);
}

QTEST_GUILESS_MAIN(TestFileRegistryChanges)
#include "TestFileRegistryChanges.moc"
