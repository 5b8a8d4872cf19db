#include "Files.h"
#include "StandardStreams.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// Text that is written to a stream.
class TestWrittenText : public QObject {
    Q_OBJECT
private slots:
    void textIsInTheFileAtOnce();
    void textThatFindsTheDiskFullIsNotWritten_data();
    void textThatFindsTheDiskFullIsNotWritten();
};

void TestWrittenText::textIsInTheFileAtOnce()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"text"_s);
    std::FILE* const file = std::fopen(qPrintable(path), "w");
    QVERIFY(file);
    QVERIFY(writeText(file, u"está\n"_s));
    QCOMPARE(contentsOf(path), QByteArray("est\xc3\xa1\n"));
    std::fclose(file);
}

void TestWrittenText::textThatFindsTheDiskFullIsNotWritten_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("shorter than the stream's buffer") << u"x"_s;
    QTest::newRow("longer") << QString(1 << 20, u'x');
}

void TestWrittenText::textThatFindsTheDiskFullIsNotWritten()
{
    QFETCH(QString, text);
    std::FILE* const file = std::fopen("/dev/full", "w");
    QVERIFY(file);
    QVERIFY(!writeText(file, text));
    std::fclose(file);
}

QTEST_GUILESS_MAIN(TestWrittenText)
#include "TestWrittenText.moc"
