#include "ClockDisplay.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A block of 220 zeros with one byte set.
ClockDisplay displayOf(qsizetype index, int value)
{
    QByteArray block(220, '\0');
    block[index] = static_cast<char>(value);
    return ClockDisplay(StatusBlock(block));
}

ClockDisplay displayOfDate(int weekday, int day, int month, int year)
{
    QByteArray block(220, '\0');
    block[8] = static_cast<char>(weekday);
    block[9] = static_cast<char>(day);
    block[10] = static_cast<char>(month);
    block[11] = static_cast<char>(year);
    return ClockDisplay(StatusBlock(block));
}

ClockDisplay displayOfTime(int hours, int minutes, int seconds)
{
    QByteArray block(220, '\0');
    block[7] = static_cast<char>(hours);
    block[6] = static_cast<char>(minutes);
    block[5] = static_cast<char>(seconds);
    return ClockDisplay(StatusBlock(block));
}

} // namespace

class TestClockDisplay : public QObject {
    Q_OBJECT
private slots:
    void dateIsWrittenOutWithABlankInFront_data();
    void dateIsWrittenOutWithABlankInFront();
    void timeHasUnpaddedHoursAndABlankAtTheEnd_data();
    void timeHasUnpaddedHoursAndABlankAtTheEnd();
    void eachOutputHasItsBitOfByte2();
    void clearInputBitsLightTheInputs_data();
    void clearInputBitsLightTheInputs();
    void flagsLightTheirIndicators_data();
    void flagsLightTheirIndicators();
    void fillsAreTheExactColours();
    void onlyABlockOf220BytesIsComplete_data();
    void onlyABlockOf220BytesIsComplete();
};

void TestClockDisplay::dateIsWrittenOutWithABlankInFront_data()
{
    QTest::addColumn<int>("weekday");
    QTest::addColumn<int>("day");
    QTest::addColumn<int>("month");
    QTest::addColumn<int>("year");
    QTest::addColumn<QString>("text");
    QTest::newRow("year byte 2") << 3 << 23 << 12 << 2 << u" miércoles, 23 de diciembre de 2002"_s;
    QTest::newRow("day is not padded") << 6 << 7 << 3 << 26 << u" sábado, 7 de marzo de 2026"_s;
    QTest::newRow("year byte 0") << 6 << 1 << 1 << 0 << u" sábado, 1 de enero de 2000"_s;
    QTest::newRow("year byte 89") << 6 << 31 << 12 << 89 << u" sábado, 31 de diciembre de 2089"_s;
    QTest::newRow("year byte 90") << 1 << 1 << 1 << 90 << u" lunes, 1 de enero de 1990"_s;
    QTest::newRow("nonsense") << 0 << 45 << 13 << 255 << u" -------, 45 de ------- de 2155"_s;
    QTest::newRow("all zero") << 0 << 0 << 0 << 0 << u" -------, 0 de ------- de 2000"_s;
}

void TestClockDisplay::dateIsWrittenOutWithABlankInFront()
{
    QFETCH(int, weekday);
    QFETCH(int, day);
    QFETCH(int, month);
    QFETCH(int, year);
    QTEST(displayOfDate(weekday, day, month, year).dateText(), "text");
}

void TestClockDisplay::timeHasUnpaddedHoursAndABlankAtTheEnd_data()
{
    QTest::addColumn<int>("hours");
    QTest::addColumn<int>("minutes");
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("9:05:03") << 9 << 5 << 3 << u"9:05:03 "_s;
    QTest::newRow("midnight") << 0 << 0 << 0 << u"0:00:00 "_s;
    QTest::newRow("last second") << 23 << 59 << 59 << u"23:59:59 "_s;
    QTest::newRow("nonsense") << 200 << 255 << 100 << u"200:255:100 "_s;
}

void TestClockDisplay::timeHasUnpaddedHoursAndABlankAtTheEnd()
{
    QFETCH(int, hours);
    QFETCH(int, minutes);
    QFETCH(int, seconds);
    QTEST(displayOfTime(hours, minutes, seconds).timeText(), "text");
}

void TestClockDisplay::eachOutputHasItsBitOfByte2()
{
    const ClockDisplay display = displayOf(2, 0x05);
    QCOMPARE(display.isOutputOn(0), true);
    QCOMPARE(display.isOutputOn(1), false);
    QCOMPARE(display.isOutputOn(2), true);
}

void TestClockDisplay::clearInputBitsLightTheInputs_data()
{
    QTest::addColumn<int>("byte218");
    QTest::addColumn<QList<bool>>("active");
    QTest::newRow("0x00 lights all three") << 0x00 << QList<bool>{true, true, true};
    QTest::newRow("0x98 darkens all three") << 0x98 << QList<bool>{false, false, false};
    QTest::newRow("bit 3 is P1") << 0x08 << QList<bool>{false, true, true};
    QTest::newRow("bit 4 is P2") << 0x10 << QList<bool>{true, false, true};
    QTest::newRow("bit 7 is the sensor") << 0x80 << QList<bool>{true, true, false};
    QTest::newRow("no other bit counts") << 0x67 << QList<bool>{true, true, true};
}

void TestClockDisplay::clearInputBitsLightTheInputs()
{
    QFETCH(int, byte218);
    const ClockDisplay display = displayOf(218, byte218);
    const QList<bool> active{display.isInputActive(0), display.isInputActive(1),
                             display.isInputActive(2)};
    QTEST(active, "active");
}

void TestClockDisplay::flagsLightTheirIndicators_data()
{
    QTest::addColumn<int>("byte219");
    QTest::addColumn<QList<bool>>("lit");
    QTest::newRow("none") << 0x00 << QList<bool>{false, false, false, false, false};
    QTest::newRow("bit 0") << 0x01 << QList<bool>{true, false, false, false, false};
    QTest::newRow("bit 1") << 0x02 << QList<bool>{false, true, false, false, false};
    QTest::newRow("bit 2") << 0x04 << QList<bool>{false, false, true, false, false};
    QTest::newRow("bit 3") << 0x08 << QList<bool>{false, false, false, true, false};
    QTest::newRow("bit 7") << 0x80 << QList<bool>{false, false, false, false, true};
    QTest::newRow("bits 4 to 6 have none")
        << 0x70 << QList<bool>{false, false, false, false, false};
}

void TestClockDisplay::flagsLightTheirIndicators()
{
    QFETCH(int, byte219);
    const ClockDisplay display = displayOf(219, byte219);
    QList<bool> lit;
    for (int i = 0; i < 5; ++i)
        lit.append(display.isStatusLit(i));
    QTEST(lit, "lit");
}

void TestClockDisplay::fillsAreTheExactColours()
{
    QCOMPARE(displayOf(2, 0x01).outputFill(0), 0x00FF00u);
    QCOMPARE(displayOf(2, 0x00).outputFill(0), 0x008000u);
    QCOMPARE(displayOf(218, 0x08).inputFill(0), 0x008000u);
    QCOMPARE(displayOf(218, 0x00).inputFill(0), 0x00FF00u);
    QCOMPARE(displayOf(219, 0x01).statusFill(0), 0x0000FFu);
    QCOMPARE(displayOf(219, 0x00).statusFill(0), 0x000080u);
}

void TestClockDisplay::onlyABlockOf220BytesIsComplete_data()
{
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<bool>("complete");
    QTest::newRow("none") << qsizetype(0) << false;
    QTest::newRow("219") << qsizetype(219) << false;
    QTest::newRow("220") << qsizetype(220) << true;
    QTest::newRow("509") << qsizetype(509) << true;
}

void TestClockDisplay::onlyABlockOf220BytesIsComplete()
{
    QFETCH(qsizetype, size);
    QTEST(ClockDisplay(StatusBlock(QByteArray(size, '\0'))).isComplete(), "complete");
}

QTEST_GUILESS_MAIN(TestClockDisplay)
#include "TestClockDisplay.moc"
