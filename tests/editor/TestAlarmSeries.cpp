#include "AlarmSeries.h"
#include "ProgrammeSamples.h"
#include "ProgrammeTexts.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestAlarmSeries : public QObject {
    Q_OBJECT
private slots:
    void breakIsAddedAfterItsAlarm();
    void alarmsHaveTheDays();
    void freeRowsAreFilled();
    void whatPassesMidnightIsToldAndLeftOut();
    void timesThatAreTakenAreToldAndLeftOut();
    void whatFindsNoRowIsTold();
};

namespace {

AlarmSeries seriesFrom(int hour, int count)
{
    AlarmSeries series;
    series.firstMinute = hour * 60;
    series.count = count;
    series.days[0] = true;
    return series;
}

QString times(const AlarmSeries& series)
{
    QStringList found;
    for (const Alarm& alarm : series.alarms())
        found.append(ProgrammeTexts::time(alarm));
    return found.join(u' ');
}

} // namespace

void TestAlarmSeries::breakIsAddedAfterItsAlarm()
{
    AlarmSeries series = seriesFrom(9, 6);
    series.breakMinutes = 25;
    series.breakAfter = 3;
    QCOMPARE(times(series), u"9:00 9:55 10:50 12:10 13:05 14:00"_s);
}

void TestAlarmSeries::alarmsHaveTheDays()
{
    AlarmSeries series = seriesFrom(9, 1);
    series.days = samples::onWorkingDays(0, 0).flags;
    QVERIFY(series.alarms() == std::vector{samples::onWorkingDays(9, 0)});
}

void TestAlarmSeries::freeRowsAreFilled()
{
    AlarmBlock block;
    block.Alarms[1] = samples::onWorkingDays(8, 0);
    const auto plan = seriesFrom(9, 2).into(block);
    QCOMPARE(plan.placed.rows, (QList{0, 2}));
    QCOMPARE(plan.placed.block.Alarms[2].Minute, quint8{55});
    QVERIFY(plan.placed.block.Alarms[1] == block.Alarms[1]);
    QCOMPARE(plan.problems, QStringList());
}

void TestAlarmSeries::whatPassesMidnightIsToldAndLeftOut()
{
    QCOMPARE(times(seriesFrom(23, 3)), u"23:00 23:55"_s);
    QCOMPARE(seriesFrom(23, 3).into({}).problems,
             QStringList{u"Un aviso pasaría de medianoche."_s});
    QCOMPARE(seriesFrom(23, 4).into({}).problems,
             QStringList{u"2 avisos pasarían de medianoche."_s});
    AlarmSeries exact = seriesFrom(23, 2);
    exact.every = 60;
    QCOMPARE(times(exact), u"23:00"_s);
}

void TestAlarmSeries::timesThatAreTakenAreToldAndLeftOut()
{
    AlarmBlock block;
    block.Alarms[0] = samples::onWorkingDays(9, 55);
    block.Alarms[1] = samples::onWorkingDays(10, 50);
    const auto plan = seriesFrom(9, 3).into(block);
    QCOMPARE(plan.problems, QStringList{u"Ya hay avisos a las 9:55, 10:50."_s});
    QCOMPARE(plan.placed.rows, QList{2});
}

void TestAlarmSeries::whatFindsNoRowIsTold()
{
    AlarmBlock block;
    block.Alarms.fill(samples::onWorkingDays(1, 1));
    block.Alarms[30] = {};
    const auto plan = seriesFrom(9, 3).into(block);
    QCOMPARE(plan.placed.rows, QList{30});
    QCOMPARE(plan.problems, QStringList{u"Falta sitio para 2 avisos."_s});
}

QTEST_GUILESS_MAIN(TestAlarmSeries)
#include "TestAlarmSeries.moc"
