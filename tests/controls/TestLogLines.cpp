#include "LogLines.h"

#include <QTest>

#ifdef __GLIBC__
#include <malloc.h>
#endif

using namespace Qt::StringLiterals;

using Place = LogLines::Place;

Q_DECLARE_METATYPE(LogLines::Place)

class TestLogLines : public QObject {
    Q_OBJECT
private slots:
    void emptyTextHasOneEmptyLine();
    void lineEndsBeginLines();
    void unfinishedLineGoesOn();
    void placesAndOffsetsBelongTogether_data();
    void placesAndOffsetsBelongTogether();
    void offsetsOutsideAreTheNearestPlace();
    void offsetsForTheToolkitStopAtItsLargestNumber();
    void byteOrderMarkIsACharacterLikeOthers();
    void everyLineOfManyIsFound();
    void textGoesOverManyLines();
#ifdef __GLIBC__
    void lineTakesLittleMoreThanItsText();
#endif
};

void TestLogLines::emptyTextHasOneEmptyLine()
{
    const LogLines lines;
    QCOMPARE(lines.lineCount(), 1);
    QCOMPARE(lines.line(0), QString());
    QCOMPARE(lines.size(), 0);
    QCOMPARE(lines.text(0, 0), QString());
    QCOMPARE(lines.end(), Place());
}

void TestLogLines::lineEndsBeginLines()
{
    LogLines lines;
    lines.append(u"uno\n\ndos\n");
    QCOMPARE(lines.lineCount(), 4);
    QCOMPARE(lines.line(0), u"uno"_s);
    QCOMPARE(lines.line(1), QString());
    QCOMPARE(lines.line(2), u"dos"_s);
    QCOMPARE(lines.line(3), QString());
    QCOMPARE(lines.size(), 9);
}

void TestLogLines::unfinishedLineGoesOn()
{
    LogLines lines;
    lines.append(u"Conexi");
    lines.append(u"ón\n");
    QCOMPARE(lines.lineCount(), 2);
    QCOMPARE(lines.line(0), u"Conexión"_s);
}

void TestLogLines::placesAndOffsetsBelongTogether_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<Place>("place");
    QTest::newRow("start") << 0 << Place{0, 0};
    QTest::newRow("behind a letter of two bytes") << 2 << Place{0, 2};
    QTest::newRow("behind a letter of two units") << 5 << Place{0, 5};
    QTest::newRow("line end") << 6 << Place{0, 6};
    QTest::newRow("second line") << 7 << Place{1, 0};
    QTest::newRow("end") << 9 << Place{1, 2};
}

void TestLogLines::placesAndOffsetsBelongTogether()
{
    QFETCH(int, offset);
    QFETCH(Place, place);
    LogLines lines;
    lines.append(u"añb\U0001F514x\nyz");
    QCOMPARE(lines.place(offset), place);
    QCOMPARE(lines.offset(place), offset);
}

void TestLogLines::offsetsOutsideAreTheNearestPlace()
{
    LogLines lines;
    lines.append(u"uno\ndos");
    QCOMPARE(lines.place(-1), (Place{0, 0}));
    QCOMPARE(lines.place(8), (Place{1, 3}));
}

void TestLogLines::offsetsForTheToolkitStopAtItsLargestNumber()
{
    QCOMPARE(LogLines::toInt(2'147'483'646), 2'147'483'646);
    QCOMPARE(LogLines::toInt(5'000'000'000), 2'147'483'647);
}

void TestLogLines::byteOrderMarkIsACharacterLikeOthers()
{
    LogLines lines;
    lines.append(u"\uFEFFuno\n\uFEFFdos\n");
    QCOMPARE(lines.size(), 10);
    QCOMPARE(lines.line(0), u"\uFEFFuno"_s);
    QCOMPARE(lines.line(1), u"\uFEFFdos"_s);
    QCOMPARE(lines.text(0, 10), u"\uFEFFuno\n\uFEFFdos\n"_s);
    QCOMPARE(lines.offset({1, 0}), 5);
    QCOMPARE(lines.place(10), (Place{2, 0}));
}

void TestLogLines::everyLineOfManyIsFound()
{
    LogLines lines;
    for (int i = 0; i < 1000; ++i)
        lines.append(u"ñ%1\n"_s.arg(i, 4));
    for (int i = 0; i < 1000; ++i) {
        QCOMPARE(lines.line(i), u"ñ%1"_s.arg(i, 4));
        QCOMPARE(lines.offset({i, 2}), 6 * i + 2);
        QCOMPARE(lines.place(6 * i + 5), (Place{i, 5}));
    }
    QCOMPARE(lines.end(), (Place{1000, 0}));
}

void TestLogLines::textGoesOverManyLines()
{
    LogLines lines;
    QString all;
    for (int i = 0; i < 1000; ++i) {
        const QString line = u"ñ%1\n"_s.arg(i, 4);
        lines.append(line);
        all += line;
    }
    QCOMPARE(lines.text(0, 6000), all);
    QCOMPARE(lines.text(1535, 4610), all.mid(1535, 3075));
    QCOMPARE(lines.text(1536, 1536), QString());
    QCOMPARE(lines.text(6000, 6000), QString());
}

#ifdef __GLIBC__
void TestLogLines::lineTakesLittleMoreThanItsText()
{
    constexpr std::size_t count = 100'000;
    const QString line = u"21/11/2026 - 09:05:03 :: Fallo en lectura de datos generales\n"_s;
    const auto allocated = [] {
        const struct mallinfo2 info = mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    const std::size_t before = allocated();
    LogLines lines;
    for (std::size_t i = 0; i < count; ++i)
        lines.append(line);
    const std::size_t each = (allocated() - before) / count;
    QVERIFY2(each <= 61 + 4, qPrintable(u"%1 bytes a line"_s.arg(each)));
}
#endif

QTEST_GUILESS_MAIN(TestLogLines)
#include "TestLogLines.moc"
