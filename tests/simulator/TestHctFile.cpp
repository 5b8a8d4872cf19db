#include "HctFile.h"

#include <QTest>

using namespace simulator;
using namespace Qt::StringLiterals;

namespace {

/// A file in which every value is 0 except the lines given by their numbers, counted from 1.
QByteArray fileWith(const QMap<int, QByteArray>& lines)
{
    QByteArray text;
    for (int line = 1; line <= 363; ++line)
        text += lines.value(line, "0") + "\r\n";
    return text;
}

} // namespace

class TestHctFile : public QObject {
    Q_OBJECT

private slots:
    void emptyProgrammeHas363Lines();
    void valuesStandInTheirLines();
    void linesAreRead_data();
    void linesAreRead();
    void faultyLineIsNamed_data();
    void faultyLineIsNamed();
    void hugeFileIsRefused();
};

void TestHctFile::emptyProgrammeHas363Lines()
{
    const QByteArrayList lines = toHctFile(ClockProgramme()).split('\n');
    QCOMPARE(lines.size(), 364);
    QCOMPARE(lines[0], QByteArray("--AVISOS 1--\r"));
    QCOMPARE(lines[99], QByteArray("--AVISOS 2--\r"));
    QCOMPARE(lines[198], QByteArray("--AVISOS 3--\r"));
    QCOMPARE(lines[297], QByteArray("--FESTIVOS--\r"));
    QCOMPARE(lines[330], QByteArray("--PERIODOS VACACIONALES--\r"));
    QCOMPARE(lines[363], QByteArray());
}

void TestHctFile::valuesStandInTheirLines()
{
    ClockProgramme programme;
    programme.blocks[0].duration = 8;
    programme.blocks[0].mode = 1;
    programme.blocks[0].setAlarm(0, 8, 30, 0x10);
    programme.blocks[2].setAlarm(31, 23, 59, 0x0D);
    programme.days[0] = 25;
    programme.days[1] = 7;
    programme.days[63] = 9;
    const QByteArrayList lines = toHctFile(programme).split('\n');
    QCOMPARE(lines.mid(1, 5), (QByteArrayList{"8\r", "1\r", "8\r", "30\r", "1\r"}));
    QCOMPARE(lines.mid(294, 3), (QByteArrayList{"23\r", "59\r", "22\r"}));
    QCOMPARE(lines.mid(298, 2), (QByteArrayList{"25\r", "7\r"}));
    QCOMPARE(lines[362], QByteArray("9\r"));
}

void TestHctFile::linesAreRead_data()
{
    QTest::addColumn<QByteArray>("text");
    const QByteArray text = fileWith({{1, "any text"},
                                      {2, "8"},
                                      {3, "2"},
                                      {4, " 8 "},
                                      {5, "30"},
                                      {6, "17"},
                                      {299, "25"},
                                      {300, "7"},
                                      {363, "12"}});
    QByteArray plain = text;
    plain.replace("\r\n", "\n");
    QTest::newRow("CR LF") << text;
    QTest::newRow("LF") << plain;
    QTest::newRow("no last line end") << plain.chopped(1);
}

void TestHctFile::linesAreRead()
{
    QFETCH(QByteArray, text);
    QString reason;
    const auto programme = fromHctFile(text, reason);
    QVERIFY2(programme, qPrintable(reason));
    const AlarmBlock& block = programme->blocks[0];
    QCOMPARE(int(block.duration), 8);
    QCOMPARE(int(block.mode), 2);
    QCOMPARE(block.bytes.left(4).toHex(), QByteArray("885e0000"));
    QCOMPARE(int(block.activeCountPlusOne), 2);
    QCOMPARE(programme->days.left(2).toHex(), QByteArray("1907"));
    QCOMPARE(programme->days.right(1).toHex(), QByteArray("0c"));
}

void TestHctFile::faultyLineIsNamed_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("line");
    QTest::newRow("hour") << fileWith({{4, "24"}}) << u"line 4 "_s;
    QTest::newRow("minute") << fileWith({{5, "60"}}) << u"line 5 "_s;
    QTest::newRow("mask") << fileWith({{6, "32"}}) << u"line 6 "_s;
    QTest::newRow("duration") << fileWith({{2, "256"}}) << u"line 2 "_s;
    QTest::newRow("holiday's month") << fileWith({{300, "13"}}) << u"line 300 "_s;
    QTest::newRow("last day") << fileWith({{362, "32"}}) << u"line 362 "_s;
    QTest::newRow("text") << fileWith({{7, "x"}}) << u"line 7 "_s;
    QTest::newRow("negative") << fileWith({{7, "-1"}}) << u"line 7 "_s;
    QTest::newRow("cut") << fileWith({}).left(20 * 3) << u"line 21 "_s;
    QTest::newRow("empty") << QByteArray() << u"line 2 "_s;
}

void TestHctFile::faultyLineIsNamed()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, line);
    QString reason;
    QVERIFY(!fromHctFile(text, reason));
    QVERIFY2(reason.startsWith(line), qPrintable(reason));
}

void TestHctFile::hugeFileIsRefused()
{
    QString reason;
    QVERIFY(!fromHctFile(QByteArray(100'000, '1'), reason));
    QCOMPARE(reason, u"the file is larger than any programme"_s);
}

QTEST_GUILESS_MAIN(TestHctFile)
#include "TestHctFile.moc"
