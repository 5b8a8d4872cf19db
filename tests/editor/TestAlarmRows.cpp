#include "AlarmRows.h"
#include "ProgrammeSamples.h"
#include "ProgrammeTexts.h"

#include <QTest>

using namespace Qt::StringLiterals;
using enum DayFlag;

class TestAlarmRows : public QObject {
    Q_OBJECT
private slots:
    void alarmsAreCopiedInTheOrderOfTheRows();
    void clearedRowsAreEmpty();
    void sortingPutsActiveAlarmsFirstByTime();
    void sortingKeepsTheOrderOfEqualTimes();
    void pastingReplacesRows();
    void whatDoesNotFitBelowIsTold();
    void insertingMovesRowsDown();
    void insertingTakesTheNextFreeRow();
    void insertingLosesNoActiveAlarm();
    void insertingBehindTheLastRowLeavesAllOut();
    void fillingInTakesFreeRows();
    void fillingInLosesNoActiveAlarm();
    void durationAndModeStay();
};

namespace {

Alarm at(int hour) { return samples::alarm(hour, 0, {Monday}); }
Alarm inactiveAt(int hour) { return samples::alarm(hour, 0, {}); }

/// A block whose first rows are these.
AlarmBlock blockOf(const std::vector<Alarm>& alarms)
{
    AlarmBlock block;
    block.Duration = 7;
    block.Mode = 1;
    std::copy(alarms.begin(), alarms.end(), block.Alarms.begin());
    return block;
}

AlarmBlock fullBlock()
{
    AlarmBlock block;
    block.Alarms.fill(at(5));
    return block;
}

/// The hours of the first rows, with a blank for rows that are not active: "9 8".
QString hours(const AlarmBlock& block, int rows)
{
    QStringList found;
    for (int row = 0; row < rows; ++row) {
        const Alarm& alarm = block.Alarms[static_cast<std::size_t>(row)];
        found.append(alarm.isActive() ? QString::number(alarm.Hour) : u"(%1)"_s.arg(alarm.Hour));
    }
    return found.join(u' ');
}

} // namespace

void TestAlarmRows::alarmsAreCopiedInTheOrderOfTheRows()
{
    QVERIFY(AlarmRows::of(blockOf({at(1), at(2), at(3)}), {2, 0}) == (std::vector{at(1), at(3)}));
}

void TestAlarmRows::clearedRowsAreEmpty()
{
    const AlarmBlock block = AlarmRows::cleared(blockOf({at(1), at(2), at(3)}), {0, 2});
    QCOMPARE(hours(block, 4), u"(0) 2 (0) (0)"_s);
}

void TestAlarmRows::sortingPutsActiveAlarmsFirstByTime()
{
    const AlarmBlock block =
        AlarmRows::sorted(blockOf({inactiveAt(4), at(9), at(8), inactiveAt(3), at(7)}));
    QCOMPARE(hours(block, 6), u"7 8 9 (4) (3) (0)"_s);
}

void TestAlarmRows::sortingKeepsTheOrderOfEqualTimes()
{
    const Alarm other = samples::alarm(9, 0, {Friday});
    const AlarmBlock block = AlarmRows::sorted(blockOf({other, at(9), at(8)}));
    QVERIFY(block.Alarms[1] == other);
}

void TestAlarmRows::pastingReplacesRows()
{
    const auto placed = AlarmRows::pasted(blockOf({at(1), at(2), at(3)}), 1, {at(8), at(9)});
    QCOMPARE(hours(placed.block, 4), u"1 8 9 (0)"_s);
    QCOMPARE(placed.rows, (QList{1, 2}));
    QCOMPARE(placed.problem(), QString());
}

void TestAlarmRows::whatDoesNotFitBelowIsTold()
{
    const auto placed = AlarmRows::pasted({}, 31, {at(7), at(8), at(9)});
    QCOMPARE(placed.block.Alarms[31].Hour, quint8{7});
    QCOMPARE(placed.rows, QList{31});
    QCOMPARE(placed.problem(), u"Falta sitio para 2 avisos."_s);
    QCOMPARE(AlarmRows::pasted({}, 31, {at(7), at(8)}).problem(), u"Falta sitio para un aviso."_s);
}

void TestAlarmRows::insertingMovesRowsDown()
{
    const auto placed = AlarmRows::inserted(blockOf({at(1), at(2), at(3)}), 1, {at(8), at(9)});
    QCOMPARE(hours(placed.block, 6), u"1 8 9 2 3 (0)"_s);
    QCOMPARE(placed.rows, (QList{1, 2}));
}

void TestAlarmRows::insertingTakesTheNextFreeRow()
{
    const auto placed =
        AlarmRows::inserted(blockOf({at(1), at(2), inactiveAt(6), at(3)}), 1, {at(8)});
    QCOMPARE(hours(placed.block, 5), u"1 8 2 3 (0)"_s);
}

void TestAlarmRows::insertingLosesNoActiveAlarm()
{
    AlarmBlock block = fullBlock();
    block.Alarms[31] = {};
    const auto placed = AlarmRows::inserted(block, 30, {at(8), at(9)});
    QCOMPARE(placed.block.Alarms[30].Hour, quint8{8});
    QCOMPARE(placed.block.Alarms[31].Hour, quint8{5});
    QCOMPARE(placed.leftOut, 1);
}

void TestAlarmRows::insertingBehindTheLastRowLeavesAllOut()
{
    const auto placed = AlarmRows::inserted({}, 31, {at(8), at(9)});
    QCOMPARE(placed.rows, QList{31});
    QCOMPARE(placed.leftOut, 1);
}

void TestAlarmRows::fillingInTakesFreeRows()
{
    const auto placed = AlarmRows::filledIn(blockOf({at(1), inactiveAt(6), at(2)}), {at(8), at(9)});
    QCOMPARE(hours(placed.block, 5), u"1 8 2 9 (0)"_s);
    QCOMPARE(placed.rows, (QList{1, 3}));
}

void TestAlarmRows::fillingInLosesNoActiveAlarm()
{
    const auto placed = AlarmRows::filledIn(fullBlock(), {at(8)});
    QVERIFY(placed.block == fullBlock());
    QCOMPARE(placed.leftOut, 1);
}

void TestAlarmRows::durationAndModeStay()
{
    const AlarmBlock block = blockOf({at(2), at(1)});
    for (const AlarmBlock& changed :
         {AlarmRows::cleared(block, {0}), AlarmRows::sorted(block),
          AlarmRows::pasted(block, 0, {at(3)}).block, AlarmRows::inserted(block, 0, {at(3)}).block,
          AlarmRows::filledIn(block, {at(3)}).block}) {
        QCOMPARE(changed.Duration, quint8{7});
        QCOMPARE(changed.Mode, quint8{1});
    }
}

QTEST_GUILESS_MAIN(TestAlarmRows)
#include "TestAlarmRows.moc"
