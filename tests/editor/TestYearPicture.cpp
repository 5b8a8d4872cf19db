#include "HolidayEdits.h"
#include "YearPicture.h"

#include <QTest>

using namespace Qt::StringLiterals;

using Date = YearPicture::Date;

class TestYearPicture : public QObject {
    Q_OBJECT
private slots:
    void everyDayHasACell();
    void dateIsFoundByItsPosition();
    void daysThatAMonthLacksAreNotFound();
    void holidayIsFoundByItsDate();
    void periodsAreFoundByADate();
    void periodOfOneMonthIsOneBar();
    void periodOfSeveralMonthsIsABarInEach();
    void periodOverTheEndOfTheYearIsTwoParts();
    void leapDayCanBeginAPeriod();
    void periodsThatNoCalendarHasAreLeftOut();
    void barsOfOneMonthThatOverlapAreBelowOneAnother();
    void dateIsDescribed();
    void clickOnADateTogglesAHoliday();
    void entriesOfTheSameDateAreRemovedTogether();
    void fullTableTakesNothing();
    void dragMakesAPeriod();
    void periodIsRemoved();
};

namespace {

/// 10 wide and 10 high for each day.
constexpr QRectF area(0, 0, 310, 120);

HolidayTable tableOf(const VacationPeriod& period)
{
    HolidayTable table;
    table.vacations[2] = period;
    return table;
}

/// "2: 24-31/12 (begins)" for each bar.
QStringList barsOf(const HolidayTable& table)
{
    QStringList found;
    const YearPicture picture(table, area);
    for (const YearPicture::Bar& bar : picture.bars())
        found.append(
            u"%1: %2-%3/%4%5%6"_s.arg(bar.period)
                .arg(bar.firstDay)
                .arg(bar.lastDay)
                .arg(bar.month)
                .arg(bar.begins ? u" begins"_s : QString(), bar.ends ? u" ends"_s : QString()));
    return found;
}

} // namespace

void TestYearPicture::everyDayHasACell()
{
    const YearPicture picture({}, area);
    QCOMPARE(picture.cell({1, 1}), QRectF(0, 0, 10, 10));
    QCOMPARE(picture.cell({31, 12}), QRectF(300, 110, 10, 10));
    QCOMPARE(YearPicture::daysOf(2), 29);
    QCOMPARE(YearPicture::monthName(9), u"Septiembre"_s);
}

void TestYearPicture::dateIsFoundByItsPosition()
{
    const YearPicture picture({}, area);
    QVERIFY(picture.dateAt({5, 5}) == (Date{1, 1}));
    QVERIFY(picture.dateAt({309, 119}) == (Date{31, 12}));
    QVERIFY(picture.dateAt({310, 120}) == (Date{31, 12}));
    QVERIFY(picture.dateAt({285, 15}) == (Date{29, 2}));
    QVERIFY(!picture.dateAt({-1, 5}));
    QVERIFY(!picture.dateAt({5, 121}));
}

void TestYearPicture::daysThatAMonthLacksAreNotFound()
{
    const YearPicture picture({}, area);
    QVERIFY(!picture.dateAt({295, 15}));
    QVERIFY(!picture.dateAt({305, 35}));
    QVERIFY(picture.dateAt({305, 45}));
}

void TestYearPicture::holidayIsFoundByItsDate()
{
    HolidayTable table;
    table.holidays[3] = {1, 5};
    const YearPicture picture(table, area);
    QCOMPARE(picture.holidayAt({1, 5}).value_or(-1), 3);
    QVERIFY(!picture.holidayAt({5, 1}));
    QVERIFY(!picture.holidayAt({1, 6}));
}

void TestYearPicture::periodsAreFoundByADate()
{
    HolidayTable table = tableOf({23, 12, 7, 1});
    table.vacations[5] = {31, 12, 31, 12};
    const YearPicture picture(table, area);
    QCOMPARE(picture.periodsAt({31, 12}), (std::vector{2, 5}));
    QCOMPARE(picture.periodsAt({7, 1}), std::vector{2});
    QCOMPARE(picture.periodsAt({8, 1}), std::vector<int>());
    QCOMPARE(picture.periodsAt({22, 12}), std::vector<int>());
}

void TestYearPicture::periodOfOneMonthIsOneBar()
{
    QCOMPARE(barsOf(tableOf({1, 8, 31, 8})), QStringList{u"2: 1-31/8 begins ends"_s});
    const YearPicture picture(tableOf({2, 8, 4, 8}), area);
    QCOMPARE(picture.rectOf(picture.bars().front()), QRectF(10, 75, 30, 5));
}

void TestYearPicture::periodOfSeveralMonthsIsABarInEach()
{
    QCOMPARE(barsOf(tableOf({23, 6, 10, 9})), (QStringList{u"2: 23-30/6 begins"_s, u"2: 1-31/7"_s,
                                                           u"2: 1-31/8"_s, u"2: 1-10/9 ends"_s}));
}

void TestYearPicture::periodOverTheEndOfTheYearIsTwoParts()
{
    QCOMPARE(barsOf(tableOf({23, 12, 7, 1})),
             (QStringList{u"2: 1-7/1 ends"_s, u"2: 23-31/12 begins"_s}));
    // From one day to the day before it: the whole year.
    QCOMPARE(barsOf(tableOf({10, 5, 9, 5})).size(), 13);
}

void TestYearPicture::leapDayCanBeginAPeriod()
{
    QCOMPARE(barsOf(tableOf({29, 2, 1, 3})),
             (QStringList{u"2: 29-29/2 begins"_s, u"2: 1-1/3 ends"_s}));
}

void TestYearPicture::periodsThatNoCalendarHasAreLeftOut()
{
    QCOMPARE(barsOf(tableOf({30, 2, 5, 3})), QStringList());
    QCOMPARE(barsOf(tableOf({1, 2, 0, 0})), QStringList());
    QCOMPARE(barsOf(tableOf({0, 0, 1, 2})), QStringList());
    QCOMPARE(barsOf(tableOf({1, 0, 1, 2})), QStringList());
    QCOMPARE(YearPicture(tableOf({1, 2, 0, 0}), area).periodsAt({1, 2}), std::vector<int>());
}

void TestYearPicture::barsOfOneMonthThatOverlapAreBelowOneAnother()
{
    HolidayTable table;
    table.vacations[0] = {1, 8, 10, 8};
    table.vacations[1] = {5, 8, 20, 8};
    table.vacations[2] = {11, 8, 12, 8};
    table.vacations[3] = {1, 9, 2, 9};
    const YearPicture picture(table, area);
    QStringList lanes;
    for (const YearPicture::Bar& bar : picture.bars())
        lanes.append(u"%1/%2"_s.arg(bar.lane).arg(bar.lanes));
    QCOMPARE(lanes, (QStringList{u"0/2"_s, u"1/2"_s, u"0/2"_s, u"0/1"_s}));
    QCOMPARE(picture.rectOf(picture.bars()[1]), QRectF(40, 77.5, 160, 2.5));
}

void TestYearPicture::dateIsDescribed()
{
    HolidayTable table = tableOf({1, 8, 31, 8});
    table.holidays[0] = {15, 8};
    const YearPicture picture(table, area);
    QCOMPARE(picture.describe({1, 9}), u"1 de septiembre"_s);
    QCOMPARE(picture.describe({15, 8}), u"15 de agosto, festivo, vacaciones 3"_s);
}

void TestYearPicture::clickOnADateTogglesAHoliday()
{
    HolidayTable table;
    table.holidays[0] = {6, 12};
    HolidayTable expected = table;
    expected.holidays[1] = {1, 5};
    QVERIFY(HolidayEdits::withHolidayToggled(table, {1, 5}) == expected);
    QVERIFY(HolidayEdits::withHolidayToggled(expected, {1, 5}) == table);
}

void TestYearPicture::entriesOfTheSameDateAreRemovedTogether()
{
    HolidayTable table;
    table.holidays.fill({1, 5});
    QVERIFY(HolidayEdits::withHolidayToggled(table, {1, 5}) == HolidayTable());
}

void TestYearPicture::fullTableTakesNothing()
{
    HolidayTable table;
    table.holidays.fill({1, 5});
    table.vacations.fill({1, 5, 1, 5});
    QVERIFY(!HolidayEdits::withHolidayToggled(table, {2, 5}));
    QVERIFY(!HolidayEdits::withPeriodAdded(table, {2, 5}, {3, 5}));
}

void TestYearPicture::dragMakesAPeriod()
{
    HolidayTable table;
    table.vacations[0] = {1, 8, 31, 8};
    HolidayTable expected = table;
    expected.vacations[1] = {23, 12, 7, 1};
    QVERIFY(HolidayEdits::withPeriodAdded(table, {23, 12}, {7, 1}) == expected);
}

void TestYearPicture::periodIsRemoved()
{
    QVERIFY(HolidayEdits::withoutPeriod(tableOf({1, 8, 31, 8}), 2) == HolidayTable());
}

QTEST_GUILESS_MAIN(TestYearPicture)
#include "TestYearPicture.moc"
