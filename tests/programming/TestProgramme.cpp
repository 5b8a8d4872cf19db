#include "Programme.h"

#include <QTest>

#include <functional>

/// Tests of the programme compare whole programmes, so nothing may be left out of a comparison.
class TestProgramme : public QObject {
    Q_OBJECT
private slots:
    void programmesThatDifferInOneValueAreNotEqual_data();
    void programmesThatDifferInOneValueAreNotEqual();
};

namespace {

using Change = std::function<void(Programme& programme)>;

} // namespace

void TestProgramme::programmesThatDifferInOneValueAreNotEqual_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char* name, const Change& change) { QTest::newRow(name) << change; };
    row("duration", [](Programme& p) { p.blocks[2].Duration = 1; });
    row("mode", [](Programme& p) { p.blocks[0].Mode = 1; });
    row("count", [](Programme& p) { p.blocks[1].ActiveCountPlusOne = 1; });
    row("hour", [](Programme& p) { p.blocks[0].Alarms[31].Hour = 1; });
    row("minute", [](Programme& p) { p.blocks[2].Alarms[0].Minute = 1; });
    row("flag", [](Programme& p) { p.blocks[1].Alarms[5].set(DayFlag::OnVacation, true); });
    row("holiday's day", [](Programme& p) { p.table.holidays[15].Day = 1; });
    row("holiday's month", [](Programme& p) { p.table.holidays[0].Month = 1; });
    row("vacation's first day", [](Programme& p) { p.table.vacations[7].StartDay = 1; });
    row("vacation's first month", [](Programme& p) { p.table.vacations[0].StartMonth = 1; });
    row("vacation's last day", [](Programme& p) { p.table.vacations[3].EndDay = 1; });
    row("vacation's last month", [](Programme& p) { p.table.vacations[5].EndMonth = 1; });
}

void TestProgramme::programmesThatDifferInOneValueAreNotEqual()
{
    QFETCH(Change, change);
    const Programme before;
    Programme after;
    QVERIFY(before == after);
    change(after);
    QVERIFY(!(before == after));
}

QTEST_GUILESS_MAIN(TestProgramme)
#include "TestProgramme.moc"
