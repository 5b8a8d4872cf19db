#include "AlarmRows.h"
#include "AlarmText.h"

#include <QTest>

#include <rapidcheck.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

Alarm anyAlarm()
{
    Alarm alarm;
    alarm.Hour = *rc::gen::inRange<quint8>(0, 24);
    alarm.Minute = *rc::gen::inRange<quint8>(0, 60);
    // Many without days.
    if (*rc::gen::arbitrary<bool>())
        for (bool& flag : alarm.flags)
            flag = *rc::gen::arbitrary<bool>();
    return alarm;
}

std::vector<Alarm> anyAlarms(int most)
{
    std::vector<Alarm> alarms(static_cast<std::size_t>(*rc::gen::inRange(0, most)));
    std::generate(alarms.begin(), alarms.end(), anyAlarm);
    return alarms;
}

AlarmBlock anyBlock()
{
    AlarmBlock block;
    std::generate(block.Alarms.begin(), block.Alarms.end(), anyAlarm);
    return block;
}

using Key = std::pair<std::array<bool, dayFlagCount>, int>;

template<typename Alarms>
std::vector<Key> activeIn(const Alarms& alarms)
{
    std::vector<Key> active;
    for (const Alarm& alarm : alarms)
        if (alarm.isActive())
            active.push_back({alarm.flags, alarm.Hour * 60 + alarm.Minute});
    std::sort(active.begin(), active.end());
    return active;
}

/// The active alarms of the block and those of `added` that found a row, and no others.
void requireNothingLost(const AlarmBlock& block, std::vector<Alarm> added,
                        const AlarmRows::Placed& placed)
{
    added.resize(added.size() - static_cast<std::size_t>(placed.leftOut));
    RC_ASSERT(static_cast<std::size_t>(placed.rows.size()) == added.size());
    for (std::size_t index = 0; index < added.size(); ++index) {
        const auto row = static_cast<std::size_t>(placed.rows[static_cast<qsizetype>(index)]);
        RC_ASSERT(placed.block.Alarms[row] == added[index]);
    }
    added.insert(added.end(), block.Alarms.begin(), block.Alarms.end());
    RC_ASSERT(activeIn(placed.block.Alarms) == activeIn(added));
}

ClockModel anyModel() { return *rc::gen::element(ClockModel::Hct7200, ClockModel::Hct7300); }

} // namespace

class TestAlarmProperties : public QObject {
    Q_OBJECT
private slots:
    void sortingKeepsTheAlarms();
    void insertingLosesNothing();
    void fillingInLosesNothing();
    void textOfAnyAlarmsIsReadAgain();
    void anyTextIsReadWithinTheRanges();
};

void TestAlarmProperties::sortingKeepsTheAlarms()
{
    QVERIFY(rc::check([] {
        const AlarmBlock block = anyBlock();
        const AlarmBlock sorted = AlarmRows::sorted(block);
        RC_ASSERT(activeIn(sorted.Alarms) == activeIn(block.Alarms));
        RC_ASSERT(
            std::is_permutation(sorted.Alarms.begin(), sorted.Alarms.end(), block.Alarms.begin()));
        RC_ASSERT(AlarmRows::sorted(sorted) == sorted);
    }));
}

void TestAlarmProperties::insertingLosesNothing()
{
    QVERIFY(rc::check([] {
        const AlarmBlock block = anyBlock();
        const std::vector<Alarm> added = anyAlarms(40);
        requireNothingLost(block, added,
                           AlarmRows::inserted(block, *rc::gen::inRange(0, 32), added));
    }));
}

void TestAlarmProperties::fillingInLosesNothing()
{
    QVERIFY(rc::check([] {
        const AlarmBlock block = anyBlock();
        const std::vector<Alarm> added = anyAlarms(40);
        requireNothingLost(block, added, AlarmRows::filledIn(block, added));
    }));
}

void TestAlarmProperties::textOfAnyAlarmsIsReadAgain()
{
    QVERIFY(rc::check([] {
        const std::vector<Alarm> alarms = anyAlarms(33);
        const auto again = AlarmText::parse(AlarmText::text(alarms), ClockModel::Hct7300);
        RC_ASSERT(again.alarms == alarms);
        RC_ASSERT(again.problems.isEmpty());
    }));
}

void TestAlarmProperties::anyTextIsReadWithinTheRanges()
{
    QVERIFY(rc::check([] {
        const std::vector<std::string> pieces = *rc::gen::container<std::vector<std::string>>(
            rc::gen::oneOf(rc::gen::arbitrary<std::string>(),
                           rc::gen::element<std::string>("9:05", "24:00", "\t", "\n", "lunes", "x",
                                                         " a ", "-", "Hora", "vac", "1", ";")));
        std::string text;
        for (const std::string& piece : pieces)
            text += piece;
        const ClockModel model = anyModel();
        for (const Alarm& alarm : AlarmText::parse(QString::fromStdString(text), model).alarms) {
            RC_ASSERT(alarm.Hour <= 23 && alarm.Minute <= 59);
            RC_ASSERT(std::none_of(alarm.flags.begin() + dayFlagsOf(model), alarm.flags.end(),
                                   [](bool on) { return on; }));
        }
    }));
}

QTEST_GUILESS_MAIN(TestAlarmProperties)
#include "TestAlarmProperties.moc"
