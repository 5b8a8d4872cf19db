#include "Files.h"
#include "HexFile.h"
#include "HexText.h"
#include "OrdinaryUser.h"
#include "TextLines.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

/// Paths that are no files, and files that fail, never end, or are no images.
class TestHexBadInput : public QObject {
    Q_OBJECT
private slots:
    void missingFileIsAReadingError();
    void folderIsAReadingError();
    void emptyPathIsAReadingError();
    void unreadableFileIsAReadingError();
    void pipeIsAReadingErrorAtOnce();
    void deviceThatNeverEndsIsAReadingErrorAtOnce();
    void failureWhileReadingIsAReadingError();
    void fileThatFailsAtTheFirstByteIsAReadingError();
    void fileChangedAfterLoadingLeavesTheLinesAlone();
    void endlessLineIsRefusedAfterOneChunk();
    void fiftyMegabytesOfText_data();
    void fiftyMegabytesOfText();
    void textOfTheLargestSizeIsReadToItsEnd_data();
    void textOfTheLargestSizeIsReadToItsEnd();
    void blanksWithoutEndAreGivenUp();

private:
    QTemporaryDir m_folder;
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString write(const QString& name, const QByteArray& text) const;
    void expectReadingError(const QString& path);
};

QString TestHexBadInput::write(const QString& name, const QByteArray& text) const
{
    return writeFile(path(name), text);
}

void TestHexBadInput::expectReadingError(const QString& path)
{
    HexFile file;
    QCOMPARE(file.LoadHexFile(path), HexFile::Outcome::ReadError);
    QCOMPARE(file.LineCount(), qint16{0});
    QCOMPARE(file.fileCaption(), QString());
    QCOMPARE(file.note(), u"Se ha producido un error leyendo el archivo '"_s +
                              QDir::toNativeSeparators(path) + u"'\r\n"_s);
}

void TestHexBadInput::missingFileIsAReadingError() { expectReadingError(path(u"no-existe.hex"_s)); }

void TestHexBadInput::folderIsAReadingError() { expectReadingError(m_folder.path()); }

void TestHexBadInput::emptyPathIsAReadingError() { expectReadingError(QString()); }

void TestHexBadInput::unreadableFileIsAReadingError()
{
    const OrdinaryUser ordinaryUser(m_folder.path());
    const QString name = write(u"cerrado.hex"_s, ":00000001FF");
    if (!QFile::setPermissions(name, {}) || QFile(name).open(QIODevice::ReadOnly))
        QSKIP("no permissions to take away here");
    expectReadingError(name);
}

void TestHexBadInput::pipeIsAReadingErrorAtOnce()
{
#ifdef Q_OS_UNIX
    const QString name = path(u"tubo.hex"_s);
    QCOMPARE(mkfifo(QFile::encodeName(name).constData(), 0600), 0);
    expectReadingError(name);
#else
    QSKIP("no such pipes here");
#endif
}

void TestHexBadInput::deviceThatNeverEndsIsAReadingErrorAtOnce()
{
    if (!QFile::exists(u"/dev/zero"_s))
        QSKIP("no such device here");
    expectReadingError(u"/dev/zero"_s);
}

void TestHexBadInput::failureWhileReadingIsAReadingError()
{
    const QByteArray text = dataRecords(5000);
    PatternDevice device(text, text.size(), 4096, true);
    HexFile file;
    QCOMPARE(file.LoadHexFile(device, u"usb.hex"_s), HexFile::Outcome::ReadError);
    QCOMPARE(file.LineCount(), qint16{0});
    QCOMPARE(file.sizeCaption(), QString());
}

void TestHexBadInput::fileThatFailsAtTheFirstByteIsAReadingError()
{
    // A regular file that opens, and whose first page cannot be read.
    if (!QFile::exists(u"/proc/self/mem"_s))
        QSKIP("no such file here");
    expectReadingError(u"/proc/self/mem"_s);
}

void TestHexBadInput::fileChangedAfterLoadingLeavesTheLinesAlone()
{
    const QString name = write(u"cambia.hex"_s, ":0400100001020304E2\n:00000001FF\n");
    HexFile file;
    QCOMPARE(file.LoadHexFile(name), HexFile::Outcome::Loaded);
    write(u"cambia.hex"_s, "basura");
    QVERIFY(QFile::remove(name));
    QCOMPARE(file.LineCount(), qint16{1});
    QCOMPARE(file.Lines(0).Data[3], quint8{4});
}

void TestHexBadInput::endlessLineIsRefusedAfterOneChunk()
{
    PatternDevice device(":0", 1LL << 40);
    HexFile file;
    QCOMPARE(file.LoadHexFile(device, u"x.hex"_s), HexFile::Outcome::FormatError);
    QVERIFY(device.bytesGiven() <= 1 << 20);
}

void TestHexBadInput::fiftyMegabytesOfText_data()
{
    QTest::addColumn<QByteArray>("pattern");
    QTest::addColumn<HexFile::Outcome>("outcome");
    QTest::newRow("prose") << QByteArray("En un lugar de la Mancha\r\n")
                           << HexFile::Outcome::FormatError;
    QTest::newRow("line feeds") << QByteArray("\n") << HexFile::Outcome::FormatError;
    QTest::newRow("carriage returns") << QByteArray("\r") << HexFile::Outcome::FormatError;
    QTest::newRow("blanks") << QByteArray(" ") << HexFile::Outcome::FormatError;
    QTest::newRow("lines of blanks") << QByteArray("  \r\n") << HexFile::Outcome::FormatError;
    QTest::newRow("address records")
        << QByteArray(":020000040001F9\r\n") << HexFile::Outcome::FormatError;
    QTest::newRow("address records ended by CR")
        << QByteArray(":020000040001F9\r") << HexFile::Outcome::FormatError;
    QTest::newRow("data records") << QByteArray(":0400100001020304E2\n")
                                  << HexFile::Outcome::ReadError;
}

void TestHexBadInput::fiftyMegabytesOfText()
{
    QFETCH(QByteArray, pattern);
    QFETCH(HexFile::Outcome, outcome);
    PatternDevice device(pattern, 50'000'000 / pattern.size() * pattern.size());
    HexFile file;
    QCOMPARE(file.LoadHexFile(device, u"x.hex"_s), outcome);
    QCOMPARE(file.LineCount(), qint16{0});
}

void TestHexBadInput::textOfTheLargestSizeIsReadToItsEnd_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<HexFile::Outcome>("outcome");
    QTest::newRow("256 MB") << 268435456LL << HexFile::Outcome::FormatError;
    QTest::newRow("256 MB and a byte") << 268435457LL << HexFile::Outcome::ReadError;
}

void TestHexBadInput::textOfTheLargestSizeIsReadToItsEnd()
{
    QFETCH(qint64, bytes);
    PatternDevice device(QByteArray(1 << 20, ' '), bytes);
    HexFile file;
    QTEST(file.LoadHexFile(device, u"x.hex"_s), "outcome");
}

void TestHexBadInput::blanksWithoutEndAreGivenUp()
{
    PatternDevice device(QByteArray(1 << 20, ' '), 1LL << 40);
    HexFile file;
    QCOMPARE(file.LoadHexFile(device, u"x.hex"_s), HexFile::Outcome::ReadError);
    QVERIFY(device.bytesGiven() <= TextLines::largestText + (1 << 20));
}

QTEST_GUILESS_MAIN(TestHexBadInput)
#include "TestHexBadInput.moc"
