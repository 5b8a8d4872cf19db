#include "Files.h"
#include "SameFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// Which paths lead to one file. In the folder are "file", "link" to it, "later", which is a link
/// to "none", and "circle", which is a link to itself.
class TestSameFile : public QObject {
    Q_OBJECT
private slots:
    void pathsLeadToOneFile_data();
    void pathsLeadToOneFile();
};

void TestSameFile::pathsLeadToOneFile_data()
{
    QTest::addColumn<QString>("one");
    QTest::addColumn<QString>("other");
    QTest::addColumn<bool>("same");
    QTest::newRow("link") << u"file"_s << u"link"_s << true;
    QTest::newRow("two files") << u"file"_s << u"circle"_s << false;
    QTest::newRow("no file yet") << u"none"_s << u"./none"_s << true;
    QTest::newRow("link to no file yet") << u"later"_s << u"none"_s << true;
    QTest::newRow("two files that are not there yet") << u"none"_s << u"other"_s << false;
    QTest::newRow("circle") << u"circle"_s << u"none"_s << false;
}

void TestSameFile::pathsLeadToOneFile()
{
    QFETCH(QString, one);
    QFETCH(QString, other);
    const QTemporaryDir folder;
    const auto path = [&folder](const QString& name) { return folder.path() + u'/' + name; };
    writeFile(path(u"file"_s), "");
    QVERIFY(QFile::link(path(u"file"_s), path(u"link"_s)));
    QVERIFY(QFile::link(path(u"none"_s), path(u"later"_s)));
    QVERIFY(QFile::link(path(u"circle"_s), path(u"circle"_s)));
    QTEST(isSameFile(path(one), path(other)), "same");
    QVERIFY(!isSameFile(path(one), QString()));
    QVERIFY(!isSameFile(QString(), path(one)));
}

QTEST_GUILESS_MAIN(TestSameFile)
#include "TestSameFile.moc"
