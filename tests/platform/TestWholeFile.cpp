#include "Files.h"
#include "WholeFile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

class TestWholeFile : public QObject {
    Q_OBJECT
private slots:
    void fileIsReadUpToTheBound();
    void whatIsNoFileIsNotRead();
    void longerFileIsReplaced();
    void fullDiskLeavesTheOldFile_data();
    void fullDiskLeavesTheOldFile();
};

/// While it lives, no file of the process grows past 100 bytes, as on a disk that is full.
class FullDisk {
public:
    FullDisk()
    {
        // Told by a failed write instead.
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_usual);
        const rlimit full{100, m_usual.rlim_max};
        if (::setrlimit(RLIMIT_FSIZE, &full) != 0)
            qFatal("cannot limit how large files may be");
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_usual); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_usual{};
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

void TestWholeFile::longerFileIsReplaced()
{
    const QTemporaryDir folder;
    const QString path = writeFile(folder.filePath(u"a"_s), QByteArray(100'000, 'x'));
    QVERIFY(WholeFile::replace(path, "new"));
    QCOMPARE(contentsOf(path), QByteArray("new"));
}

void TestWholeFile::fullDiskLeavesTheOldFile_data()
{
    QTest::addColumn<int>("bytes");
    // The toolkit keeps up to 16 KiB before it writes anything.
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

QTEST_GUILESS_MAIN(TestWholeFile)
#include "TestWholeFile.moc"
