#include "ProgrammeSamples.h"
#include "WeekPicture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using enum DayFlag;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

class TestWeekPicture : public QObject {
    Q_OBJECT
private slots:
    void everyDayHasAColumn();
    void hoursAreShownAsFarAsThereAreAlarms_data();
    void hoursAreShownAsFarAsThereAreAlarms();
    void everyDayOfAnAlarmHasAMark();
    void timeGoesDownwards();
    void marksAtTheSameTimeAreSideBySide();
    void marksThatWouldOverlapAreSideBySide();
    void marksOfDifferentDaysDoNotShareAColumn();
    void laneIsUsedAgainAfterItsMark();
    void markBeforeTheEndOfTheLastHourStaysInside();
    void markIsFoundByItsPosition();
    void marksNeverOverlapAndStayInTheirColumn();
    void readableHeightHasThreeMarksSideBySide();
    void readableHeightIsBounded_data();
    void readableHeightIsBounded();
};

namespace {

/// 100 wide for each day of the HCT-7200.
constexpr QRectF area(0, 0, 500, 600);
constexpr qreal markHeight = 10;

Programme programmeOf(const std::vector<Alarm>& alarms)
{
    Programme programme;
    std::copy(alarms.begin(), alarms.end(), programme.blocks[0].Alarms.begin());
    return programme;
}

WeekPicture pictureOf(const std::vector<Alarm>& alarms)
{
    return {programmeOf(alarms), hct7200, area, markHeight};
}

/// "lane/lanes" of all marks.
QString lanes(const WeekPicture& picture)
{
    QStringList found;
    for (const WeekPicture::Mark& mark : picture.marks())
        found.append(u"%1/%2"_s.arg(mark.lane).arg(mark.lanes));
    return found.join(u' ');
}

} // namespace

void TestWeekPicture::everyDayHasAColumn()
{
    QCOMPARE(WeekPicture({}, hct7200, area, markHeight).columnCount(), 5);
    QCOMPARE(WeekPicture({}, hct7300, area, markHeight).columnCount(), 9);
    QCOMPARE(pictureOf({}).columnRect(4), QRectF(400, 0, 100, 600));
    QCOMPARE(WeekPicture::columnName(2), u"Miércoles"_s);
    QCOMPARE(WeekPicture::columnName(7), u"Festivo"_s);
}

void TestWeekPicture::hoursAreShownAsFarAsThereAreAlarms_data()
{
    QTest::addColumn<int>("firstMinute");
    QTest::addColumn<int>("lastMinute");
    QTest::addColumn<int>("firstHour");
    QTest::addColumn<int>("endHour");
    QTest::newRow("whole hours") << 8 * 60 << 14 * 60 << 8 << 15;
    QTest::newRow("within hours") << 8 * 60 + 59 << 13 * 60 + 59 << 8 << 14;
    QTest::newRow("whole day") << 0 << 23 * 60 + 59 << 0 << 24;
    QTest::newRow("one time") << 9 * 60 + 30 << 9 * 60 + 30 << 9 << 10;
}

void TestWeekPicture::hoursAreShownAsFarAsThereAreAlarms()
{
    QFETCH(int, firstMinute);
    QFETCH(int, lastMinute);
    const WeekPicture picture =
        pictureOf({samples::alarm(lastMinute / 60, lastMinute % 60, {Monday}),
                   samples::alarm(firstMinute / 60, firstMinute % 60, {Friday}),
                   // Without days it is not shown.
                   samples::alarm(3, 0, {})});
    QTEST(picture.firstHour(), "firstHour");
    QTEST(picture.endHour(), "endHour");
}

void TestWeekPicture::everyDayOfAnAlarmHasAMark()
{
    Programme programme;
    programme.blocks[2].Alarms[31] = samples::alarm(9, 5, {Tuesday, OnVacation});
    const WeekPicture picture(programme, hct7300, area, markHeight);
    QCOMPARE(picture.marks().size(), 2U);
    QCOMPARE(picture.marks()[0].column, 1);
    const WeekPicture::Mark& mark = picture.marks()[1];
    QCOMPARE(mark.column, 8);
    QCOMPARE(mark.minute, 9 * 60 + 5);
    QCOMPARE(mark.block, 2);
    QCOMPARE(mark.row, 31);
}

void TestWeekPicture::timeGoesDownwards()
{
    const WeekPicture picture =
        pictureOf({samples::alarm(8, 0, {Monday}), samples::alarm(10, 30, {Tuesday})});
    // 200 for each of three hours.
    QCOMPARE(picture.yOfMinute(9 * 60), 200.0);
    QCOMPARE(picture.marks()[0].rect, QRectF(0, 0, 100, 10));
    QCOMPARE(picture.marks()[1].rect, QRectF(100, 500, 100, 10));
}

void TestWeekPicture::marksAtTheSameTimeAreSideBySide()
{
    Programme programme = programmeOf({samples::alarm(8, 0, {Monday})});
    programme.blocks[1].Alarms[7] = samples::alarm(8, 0, {Monday});
    const WeekPicture picture(programme, hct7200, area, markHeight);
    QCOMPARE(lanes(picture), u"0/2 1/2"_s);
    QCOMPARE(picture.marks()[0].block, 0);
    QCOMPARE(picture.marks()[0].rect, QRectF(0, 0, 50, 10));
    QCOMPARE(picture.marks()[1].rect, QRectF(50, 0, 50, 10));
}

void TestWeekPicture::marksThatWouldOverlapAreSideBySide()
{
    // A mark is as high as a minute.
    const QRectF hour(0, 0, 500, 60);
    const auto picture = [&](qreal height) {
        return WeekPicture(
            programmeOf({samples::alarm(8, 0, {Monday}), samples::alarm(8, 5, {Monday})}), hct7200,
            hour, height);
    };
    QCOMPARE(lanes(picture(5)), u"0/1 0/1"_s);
    QCOMPARE(lanes(picture(6)), u"0/2 1/2"_s);
}

void TestWeekPicture::marksOfDifferentDaysDoNotShareAColumn()
{
    QCOMPARE(lanes(pictureOf({samples::onWorkingDays(8, 0)})), u"0/1 0/1 0/1 0/1 0/1"_s);
}

void TestWeekPicture::laneIsUsedAgainAfterItsMark()
{
    const WeekPicture picture(
        programmeOf({samples::alarm(8, 0, {Monday}), samples::alarm(8, 6, {Monday}),
                     samples::alarm(8, 12, {Monday}), samples::alarm(8, 40, {Monday})}),
        hct7200, {0, 0, 500, 60}, 10);
    QCOMPARE(lanes(picture), u"0/2 1/2 0/2 0/1"_s);
}

void TestWeekPicture::markBeforeTheEndOfTheLastHourStaysInside()
{
    const WeekPicture picture =
        pictureOf({samples::alarm(8, 59, {Monday}), samples::alarm(8, 50, {Monday})});
    QCOMPARE(picture.marks()[1].rect.bottom(), 600.0);
}

void TestWeekPicture::markIsFoundByItsPosition()
{
    const WeekPicture picture =
        pictureOf({samples::alarm(8, 0, {Monday}), samples::alarm(10, 30, {Tuesday})});
    QCOMPARE(picture.markAt({150, 505})->row, 1);
    QVERIFY(!picture.markAt({150, 495}));
    QVERIFY(!picture.markAt({50, 505}));
}

void TestWeekPicture::marksNeverOverlapAndStayInTheirColumn()
{
    Programme programme;
    for (std::size_t block = 0; block < 3; ++block)
        for (std::size_t row = 0; row < 32; ++row)
            programme.blocks[block].Alarms[row] = samples::onWorkingDays(
                static_cast<int>(8 + row % 3), static_cast<int>(row * 7 % 60));
    const WeekPicture picture(programme, hct7300, area, 25);
    const auto& marks = picture.marks();
    QCOMPARE(marks.size(), 480U);
    for (std::size_t one = 0; one < marks.size(); ++one) {
        QVERIFY(marks[one].lane < marks[one].lanes);
        const QRectF column = picture.columnRect(marks[one].column);
        // Widths are fractions.
        QVERIFY(column.adjusted(-0.001, -0.001, 0.001, 0.001).contains(marks[one].rect));
        for (std::size_t other = 0; other < one; ++other) {
            const QRectF common = marks[one].rect & marks[other].rect;
            QVERIFY2(common.width() < 0.001 || common.height() < 0.001,
                     qPrintable(u"%1 and %2"_s.arg(one).arg(other)));
        }
    }
}

void TestWeekPicture::readableHeightHasThreeMarksSideBySide()
{
    // Each of the four overlaps the next in the height of the area.
    const Programme crowded =
        programmeOf({samples::alarm(8, 0, {Monday}), samples::alarm(8, 4, {Monday}),
                     samples::alarm(8, 8, {Monday}), samples::alarm(8, 12, {Monday})});
    const QRectF low(0, 0, 500, 40);
    const WeekPicture flat(crowded, hct7200, low, markHeight);
    QCOMPARE(lanes(flat), u"0/4 1/4 2/4 3/4"_s);
    // The first and the fourth are 12 minutes apart: five marks below one another in an hour.
    QCOMPARE(flat.readableHeight(markHeight), 50.0);
    const WeekPicture readable(crowded, hct7200, {0, 0, 500, 50}, markHeight);
    QCOMPARE(lanes(readable), u"0/3 1/3 2/3 0/3"_s);
}

void TestWeekPicture::readableHeightIsBounded_data()
{
    QTest::addColumn<int>("minutesApart");
    QTest::addColumn<qreal>("height");
    QTest::newRow("a mark an hour at least") << 50 << 3.0 * markHeight;
    QTest::newRow("ten marks an hour at most") << 1 << 1.0 * 10 * markHeight;
    QTest::newRow("clashes need no height") << 0 << 1.0 * markHeight;
}

void TestWeekPicture::readableHeightIsBounded()
{
    QFETCH(int, minutesApart);
    std::vector<Alarm> alarms;
    for (int row = 0; row < 4; ++row) {
        const int minute = 8 * 60 + row * minutesApart;
        alarms.push_back(samples::alarm(minute / 60, minute % 60, {Monday}));
    }
    QTEST(pictureOf(alarms).readableHeight(markHeight), "height");
}

QTEST_GUILESS_MAIN(TestWeekPicture)
#include "TestWeekPicture.moc"
