#include "ProgrammeFile.h"
#include "ProgrammeLines.h"

#include <QTest>

using enum DayFlag;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

/// The lines of a programme's file.
class TestProgrammeText : public QObject {
    Q_OBJECT
private slots:
    void emptyProgrammeHas363Lines();
    void valuesAreWrittenInTheirOrderWithoutPadding();
    void hct7300WritesTheMaskOfItsMode();
    void maskOutOfItsRangeLoadsAsNoDays_data();
    void maskOutOfItsRangeLoadsAsNoDays();
    void holidayOf31And13LoadsAsDay31Month0();
    void valueOutOfItsRangeBecomesZero_data();
    void valueOutOfItsRangeBecomesZero();
    void headersAreKnownByTheirPlace();
    void hct7200KeepsDurationAndModeOfTheClock();
    void hct7300TakesDurationAndModeFromTheFile();
    void durationAndModeThatAreNoByteLeaveTheBlocks_data();
    void durationAndModeThatAreNoByteLeaveTheBlocks();
    void maskIsReadByTheModeJustRead();
    void leadingNumberOfALine_data();
    void leadingNumberOfALine();
    void lineEndsMakeNoDifference();
    void missingLastLineEndMakesNoDifference();
    void fileShortByLinesKeepsWhatWasHeld_data();
    void fileShortByLinesKeepsWhatWasHeld();
    void binaryReadsAsZerosAndDoesNotFail();
};

void TestProgrammeText::emptyProgrammeHas363Lines()
{
    const QByteArray text = ProgrammeFile::text(Programme(), hct7200);
    QCOMPARE(text, ProgrammeLines().text());
    QCOMPARE(text.count("\r\n"), 363);
    QVERIFY(text.startsWith("--AVISOS 1--\r\n0\r\n0\r\n0\r\n"));
}

void TestProgrammeText::valuesAreWrittenInTheirOrderWithoutPadding()
{
    Programme programme;
    programme.blocks[0].Duration = 5;
    programme.blocks[0].Mode = 1;
    programme.blocks[0].Alarms[0] = samples::onWorkingDays(8, 5);
    programme.blocks[2].Alarms[31] = samples::alarm(23, 59, {Wednesday});
    programme.table.holidays[0] = {25, 12};
    programme.table.holidays[15] = {1, 5};
    programme.table.vacations[0] = {23, 12, 7, 1};
    programme.table.vacations[7] = {1, 7, 31, 8};

    ProgrammeLines lines;
    lines.block(0, 0) = "5";
    lines.block(0, 1) = "1";
    lines.alarm(0, 0, 0) = "8";
    lines.alarm(0, 0, 1) = "5";
    lines.alarm(0, 0, 2) = "31";
    lines.alarm(2, 31, 0) = "23";
    lines.alarm(2, 31, 1) = "59";
    lines.alarm(2, 31, 2) = "4";
    lines.holiday(0, 0) = "25";
    lines.holiday(0, 1) = "12";
    lines.holiday(15, 0) = "1";
    lines.holiday(15, 1) = "5";
    lines.vacation(0, 0) = "23";
    lines.vacation(0, 1) = "12";
    lines.vacation(0, 2) = "7";
    lines.vacation(0, 3) = "1";
    lines.vacation(7, 0) = "1";
    lines.vacation(7, 1) = "7";
    lines.vacation(7, 2) = "31";
    lines.vacation(7, 3) = "8";
    QCOMPARE(ProgrammeFile::text(programme, hct7200), lines.text());
}

void TestProgrammeText::hct7300WritesTheMaskOfItsMode()
{
    Programme programme;
    programme.blocks[0].Mode = 1;
    programme.blocks[0].Alarms[0] = samples::alarm(0, 0, {Monday, Saturday});
    programme.blocks[1].Mode = 2;
    programme.blocks[1].Alarms[0] = samples::alarm(0, 0, {Monday, Saturday, OnVacation});
    ProgrammeLines lines;
    lines.block(0, 1) = "1";
    lines.alarm(0, 0, 2) = "1";
    lines.block(1, 1) = "2";
    lines.alarm(1, 0, 2) = "9";
    QCOMPARE(ProgrammeFile::text(programme, hct7300), lines.text());
}

void TestProgrammeText::maskOutOfItsRangeLoadsAsNoDays_data()
{
    QTest::addColumn<QByteArray>("mask");
    // 32 and 63 have a bit for Saturday; the last byte of 287 and of 4127 is 31.
    for (const char* mask : {"32", "33", "63", "255", "287", "4127", "-1", "-225"})
        QTest::newRow(mask) << QByteArray(mask);
}

void TestProgrammeText::maskOutOfItsRangeLoadsAsNoDays()
{
    QFETCH(QByteArray, mask);
    ProgrammeLines lines;
    lines.alarm(0, 4, 0) = "7";
    lines.alarm(0, 4, 2) = mask;
    Programme programme = allNines(hct7200);
    ProgrammeFile::read(lines.text(), programme, hct7200);
    QVERIFY(programme.blocks[0].Alarms[4] == samples::alarm(7, 0, {}));

    // In mode 0 the flag of the holidays is not part of the mask.
    programme = allNines(hct7300);
    ProgrammeFile::read(lines.text(), programme, hct7300);
    QVERIFY(programme.blocks[0].Alarms[4] == samples::alarm(7, 0, {OnHoliday}));
}

void TestProgrammeText::holidayOf31And13LoadsAsDay31Month0()
{
    ProgrammeLines lines;
    lines.holiday(2, 0) = "31";
    lines.holiday(2, 1) = "13";
    Programme programme;
    ProgrammeFile::read(lines.text(), programme, hct7200);
    QVERIFY((programme.table.holidays[2] == Holiday{31, 0}));
}

void TestProgrammeText::valueOutOfItsRangeBecomesZero_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("hour");
    QTest::addColumn<int>("minute");
    QTest::addColumn<int>("day");
    QTest::addColumn<int>("month");
    const auto row = [](const QByteArray& line, int hour, int minute, int day, int month) {
        QTest::newRow(line.left(30).constData()) << line << hour << minute << day << month;
    };
    row("12", 12, 12, 12, 12);
    row("13", 13, 13, 13, 0);
    row("23", 23, 23, 23, 0);
    row("24", 0, 24, 24, 0);
    row("31", 0, 31, 31, 0);
    row("32", 0, 32, 0, 0);
    row("59", 0, 59, 0, 0);
    row("60", 0, 0, 0, 0);
    row("256", 0, 0, 0, 0);
    row("-1", 0, 0, 0, 0);
    row("-0.5", 0, 0, 0, 0);
    row("0x0A", 0, 0, 0, 0);
    row("&H0A", 0, 0, 0, 0);
    row(QByteArray(400, '1'), 0, 0, 0, 0);
    row(QByteArray(400, '0') + "7", 7, 7, 7, 7);
    row("4294967303", 0, 0, 0, 0);
}

void TestProgrammeText::valueOutOfItsRangeBecomesZero()
{
    QFETCH(QByteArray, line);
    ProgrammeLines lines;
    lines.alarm(1, 2, 0) = line;
    lines.alarm(1, 2, 1) = line;
    lines.holiday(3, 0) = line;
    lines.holiday(3, 1) = line;
    for (int field = 0; field < 4; ++field)
        lines.vacation(5, field) = line;
    Programme programme = allNines(hct7200);
    ProgrammeFile::read(lines.text(), programme, hct7200);
    QTEST(int{programme.blocks[1].Alarms[2].Hour}, "hour");
    QTEST(int{programme.blocks[1].Alarms[2].Minute}, "minute");
    QTEST(int{programme.table.holidays[3].Day}, "day");
    QTEST(int{programme.table.holidays[3].Month}, "month");
    QTEST(int{programme.table.vacations[5].StartDay}, "day");
    QTEST(int{programme.table.vacations[5].StartMonth}, "month");
    QTEST(int{programme.table.vacations[5].EndDay}, "day");
    QTEST(int{programme.table.vacations[5].EndMonth}, "month");
}

void TestProgrammeText::headersAreKnownByTheirPlace()
{
    ProgrammeLines lines;
    lines.alarm(1, 0, 0) = "7";
    lines.holiday(0, 0) = "6";
    lines.vacation(0, 0) = "5";
    lines.all[0] = "12";
    lines.all[99] = "";
    lines.all[198] = "otra cosa";
    lines.all[297] = "--AVISOS 1--";
    lines.all[330] = QByteArray(5000, '\xff');
    Programme programme = allNines(hct7200);
    ProgrammeFile::read(lines.text(), programme, hct7200);
    QCOMPARE(programme.blocks[1].Alarms[0].Hour, quint8{7});
    QCOMPARE(programme.table.holidays[0].Day, quint8{6});
    QCOMPARE(programme.table.vacations[0].StartDay, quint8{5});
    QCOMPARE(programme.blocks[0].Alarms[0].Hour, quint8{0});
}

void TestProgrammeText::hct7200KeepsDurationAndModeOfTheClock()
{
    ProgrammeLines lines;
    lines.block(0, 0) = "77";
    lines.block(0, 1) = "7";
    Programme programme;
    programme.blocks[0].Duration = 12;
    programme.blocks[0].Mode = 1;
    ProgrammeFile::read(lines.text(), programme, hct7200);
    QCOMPARE(programme.blocks[0].Duration, quint8{12});
    QCOMPARE(programme.blocks[0].Mode, quint8{1});
    const QByteArray saved = ProgrammeFile::text(programme, hct7200);
    QVERIFY(saved.startsWith("--AVISOS 1--\r\n12\r\n1\r\n"));
}

void TestProgrammeText::hct7300TakesDurationAndModeFromTheFile()
{
    ProgrammeLines lines;
    lines.block(0, 0) = "255";
    lines.block(0, 1) = "3";
    Programme programme = allNines(hct7300);
    ProgrammeFile::read(lines.text(), programme, hct7300);
    QCOMPARE(programme.blocks[0].Duration, quint8{255});
    QCOMPARE(programme.blocks[0].Mode, quint8{3});
    QCOMPARE(programme.blocks[1].Duration, quint8{0});
    QCOMPARE(programme.blocks[1].Mode, quint8{0});
}

void TestProgrammeText::durationAndModeThatAreNoByteLeaveTheBlocks_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("duration");
    QTest::addColumn<int>("mode");
    QTest::newRow("256") << QByteArray("256") << 9 << 1;
    QTest::newRow("-1") << QByteArray("-1") << 9 << 1;
    QTest::newRow("400 digits") << QByteArray(400, '9') << 9 << 1;
    QTest::newRow("255.5") << QByteArray("255.5") << 9 << 1;
    QTest::newRow("no number") << QByteArray("abc") << 0 << 0;
    QTest::newRow("empty") << QByteArray() << 0 << 0;
    QTest::newRow("2.5") << QByteArray("2.5") << 2 << 2;
}

void TestProgrammeText::durationAndModeThatAreNoByteLeaveTheBlocks()
{
    QFETCH(QByteArray, line);
    ProgrammeLines lines;
    lines.block(2, 0) = line;
    lines.block(2, 1) = line;
    Programme programme = allNines(hct7300);
    ProgrammeFile::read(lines.text(), programme, hct7300);
    QTEST(int{programme.blocks[2].Duration}, "duration");
    QTEST(int{programme.blocks[2].Mode}, "mode");
}

void TestProgrammeText::maskIsReadByTheModeJustRead()
{
    ProgrammeLines lines;
    lines.block(0, 1) = "2";
    lines.alarm(0, 0, 2) = "5";
    lines.alarm(0, 1, 2) = "16";
    lines.block(1, 1) = "0";
    lines.alarm(1, 0, 2) = "5";
    Programme programme = allNines(hct7300);
    ProgrammeFile::read(lines.text(), programme, hct7300);
    // The bit of the working days is clear: Monday and Thursday stay.
    QVERIFY(programme.blocks[0].Alarms[0] ==
            samples::alarm(0, 0, {Monday, Thursday, Saturday, OnHoliday}));
    QVERIFY(programme.blocks[0].Alarms[1] == samples::onWorkingDays(0, 0));
    // Single days: holidays stay, the rest comes from the mask.
    QVERIFY(programme.blocks[1].Alarms[0] == samples::alarm(0, 0, {Monday, Wednesday, OnHoliday}));
}

void TestProgrammeText::leadingNumberOfALine_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("number");
    const auto row = [](const char* line, int number) {
        QTest::newRow(line) << QByteArray(line) << number;
    };
    row("7", 7);
    row(" 7 ", 7);
    row("\t 7\r", 7);
    row("007", 7);
    row("+7", 7);
    row("- 7", 0);
    row("-7", -7);
    row("7abc", 7);
    row("7 8", 7);
    row("7,9", 7);
    row("1e1", 1);
    row("x7", 0);
    row("", 0);
    row(" ", 0);
    row("-", 0);
    row(".", 0);
    row("7.", 7);
    row(".6", 1);
    row("0.5", 0);
    row("1.5", 2);
    row("2.5", 2);
    row("2.5000", 2);
    row("2.50000000000000000000000001", 3);
    row("2.49999999999999999999999999", 2);
    row("-1.5", -2);
    row("-2.5", -2);
    row("22.5", 22);
    row("23.5", 24);
    row("999999", 999999);
    row("9999999.9", ProgrammeFile::tooLarge);
    row("2147483648", ProgrammeFile::tooLarge);
    row("-99999999999999999999", -ProgrammeFile::tooLarge);
}

void TestProgrammeText::leadingNumberOfALine()
{
    QFETCH(QByteArray, line);
    QTEST(ProgrammeFile::leadingNumber(line), "number");
}

void TestProgrammeText::lineEndsMakeNoDifference()
{
    ProgrammeLines lines;
    lines.alarm(1, 30, 0) = "22";
    lines.vacation(7, 3) = "12";
    Programme expected = allNines(hct7200);
    ProgrammeFile::read(lines.text(), expected, hct7200);
    QCOMPARE(expected.table.vacations[7].EndMonth, quint8{12});
    Programme programme = allNines(hct7200);
    ProgrammeFile::read(lines.text("\n"), programme, hct7200);
    QVERIFY(programme == expected);
}

void TestProgrammeText::missingLastLineEndMakesNoDifference()
{
    ProgrammeLines lines;
    lines.vacation(7, 3) = "11";
    for (const QByteArray& end : {QByteArray("\r\n"), QByteArray("\n")}) {
        QByteArray text = lines.text(end);
        text.chop(end.size());
        Programme programme = allNines(hct7200);
        ProgrammeFile::read(text, programme, hct7200);
        QCOMPARE(programme.table.vacations[7].EndMonth, quint8{11});
    }
}

void TestProgrammeText::fileShortByLinesKeepsWhatWasHeld_data()
{
    QTest::addColumn<int>("count");
    for (int count = 0; count <= 363; ++count)
        QTest::addRow("%d lines", count) << count;
}

void TestProgrammeText::fileShortByLinesKeepsWhatWasHeld()
{
    QFETCH(int, count);
    // Every line of the file is 1 and every value before is 9, so the programme shows which were
    // read.
    const QByteArray text = QByteArray("1\r\n").repeated(count);
    for (const ClockModel model : {hct7200, hct7300}) {
        Programme programme = allNines(model);
        ProgrammeFile::read(text, programme, model);
        int line = 0;
        const auto value = [&line, count](int held) { return line++ < count ? 1 : held; };
        for (const AlarmBlock& block : programme.blocks) {
            ++line;
            const int duration = value(9);
            QCOMPARE(int{block.Duration}, model == hct7200 ? 9 : duration);
            ++line;
            for (const Alarm& alarm : block.Alarms) {
                QCOMPARE(int{alarm.Hour}, value(9));
                QCOMPARE(int{alarm.Minute}, value(9));
                const bool maskRead = value(0) == 1;
                QCOMPARE(alarm.is(Thursday), !maskRead);
            }
        }
        ++line;
        for (const Holiday& holiday : programme.table.holidays) {
            QCOMPARE(int{holiday.Day}, value(9));
            QCOMPARE(int{holiday.Month}, value(9));
        }
        ++line;
        for (const VacationPeriod& period : programme.table.vacations) {
            QCOMPARE(int{period.StartDay}, value(9));
            QCOMPARE(int{period.StartMonth}, value(9));
            QCOMPARE(int{period.EndDay}, value(9));
            QCOMPARE(int{period.EndMonth}, value(9));
        }
        QCOMPARE(line, 363);
    }
}

void TestProgrammeText::binaryReadsAsZerosAndDoesNotFail()
{
    QByteArray binary;
    for (int line = 0; line < 400; ++line)
        binary += QByteArray::fromHex("ff00c328e2fe0d") + '\n';
    Programme programme = allNines(hct7200);
    ProgrammeFile::read(binary, programme, hct7200);
    Programme expected;
    for (AlarmBlock& block : expected.blocks) {
        block.Duration = 9;
        block.Mode = 1;
    }
    QVERIFY(programme == expected);
}

QTEST_GUILESS_MAIN(TestProgrammeText)
#include "TestProgrammeText.moc"
