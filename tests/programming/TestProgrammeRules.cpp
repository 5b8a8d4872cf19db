#include "ProgrammeRules.h"
#include "ProgrammeSamples.h"

#include <QTest>

using namespace Qt::StringLiterals;
using enum DayFlag;
using ProgrammeRules::firstViolation;
using ProgrammeRules::Violation;
using ProgrammeRules::violations;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

class TestProgrammeRules : public QObject {
    Q_OBJECT
private slots:
    void twoActiveAlarmsAtHalfPastSevenInBlockTwoClash();
    void clashIsToldWithoutPadding();
    void disjointDaysStillClash();
    void inactiveAlarmsNeverClash();
    void sameTimeInTwoBlocksIsNoClash();
    void firstPairOfTheFirstBlockIsTold();
    void everyPairOfABlockClashes();
    void clashOfALaterBlockComesBeforeARestrictionOfAnEarlierOne();
    void specialDaysAreRefusedInModesZeroAndOne();
    void singleWorkingDaysAreRefusedInModesTwoAndThree_data();
    void singleWorkingDaysAreRefusedInModesTwoAndThree();
    void otherModesHaveNoRestriction();
    void hct7200HasNoRestriction();
    void restrictionNamesTheModeOfTheFirstBlockThatBreaksIt();
    void everyViolationIsTold();
    void violationIsToldInOneLine();
    void blockWithoutActiveAlarmCountsOne();
    void fullBlockCountsThirtyThree();
    void alarmWithoutDaysIsClearedAndGoesToTheEnd();
    void blockLeavesTheNextOneAlone();
    void activeAlarmsComeInOrderOfTime();
    void equalTimesKeepTheirOrder();
    void exchangeSortIsNotStable();
};

void TestProgrammeRules::twoActiveAlarmsAtHalfPastSevenInBlockTwoClash()
{
    Programme programme;
    programme.blocks[1].Alarms[3] = samples::onWorkingDays(7, 30);
    programme.blocks[1].Alarms[30] = samples::onWorkingDays(7, 30);
    for (const ClockModel model : {hct7200, hct7300}) {
        const auto violation = firstViolation(programme, model);
        QVERIFY(violation);
        QVERIFY(violation->kind == Violation::Kind::Clash);
        QCOMPARE(violation->block, 1);
        QCOMPARE(violation->text,
                 u"Error en el bloque de avisos 2. Está intentando programar múltiples avisos\r\n"
                 "para las 7:30 horas."_s);
    }
}

void TestProgrammeRules::clashIsToldWithoutPadding()
{
    Programme programme;
    programme.blocks[0].Alarms[0] = samples::onWorkingDays(8, 5);
    programme.blocks[0].Alarms[1] = samples::onWorkingDays(8, 5);
    QVERIFY(firstViolation(programme, hct7200)->text.endsWith(u"para las 8:5 horas."));
}

void TestProgrammeRules::disjointDaysStillClash()
{
    Programme programme;
    programme.blocks[0].Alarms[0] = samples::alarm(10, 0, {Monday});
    programme.blocks[0].Alarms[31] = samples::alarm(10, 0, {Tuesday});
    QVERIFY(firstViolation(programme, hct7200));
    programme.blocks[0].Mode = 2;
    programme.blocks[0].Alarms[0] = samples::alarm(10, 0, {Saturday});
    programme.blocks[0].Alarms[31] = samples::alarm(10, 0, {OnVacation});
    QVERIFY(firstViolation(programme, hct7300)->kind == Violation::Kind::Clash);
}

void TestProgrammeRules::inactiveAlarmsNeverClash()
{
    Programme programme;
    programme.blocks[0].Alarms[0] = samples::alarm(10, 0, {Monday});
    programme.blocks[0].Alarms[1] = samples::alarm(10, 0, {});
    programme.blocks[0].Alarms[2] = samples::alarm(10, 0, {});
    QVERIFY(!firstViolation(programme, hct7200));
    QVERIFY(!firstViolation(programme, hct7300));
}

void TestProgrammeRules::sameTimeInTwoBlocksIsNoClash()
{
    Programme programme;
    programme.blocks[0].Alarms[0] = samples::onWorkingDays(10, 0);
    programme.blocks[1].Alarms[0] = samples::onWorkingDays(10, 0);
    QVERIFY(!firstViolation(programme, hct7200));
}

void TestProgrammeRules::firstPairOfTheFirstBlockIsTold()
{
    Programme programme;
    programme.blocks[2].Alarms[0] = samples::onWorkingDays(1, 0);
    programme.blocks[2].Alarms[1] = samples::onWorkingDays(1, 0);
    programme.blocks[1].Alarms[1] = samples::onWorkingDays(3, 0);
    programme.blocks[1].Alarms[2] = samples::onWorkingDays(3, 0);
    programme.blocks[1].Alarms[0] = samples::onWorkingDays(4, 10);
    programme.blocks[1].Alarms[31] = samples::onWorkingDays(4, 10);
    const auto violation = firstViolation(programme, hct7200);
    QCOMPARE(violation->block, 1);
    QVERIFY(violation->text.endsWith(u"para las 4:10 horas."));
}

void TestProgrammeRules::everyPairOfABlockClashes()
{
    using ProgrammeRules::Clash;
    AlarmBlock block;
    for (const std::size_t index : {0U, 5U, 31U})
        block.Alarms[index] = samples::alarm(9, 0, {Monday});
    block.Alarms[1] = samples::alarm(9, 0, {});
    block.Alarms[2] = samples::alarm(9, 1, {Monday});
    QVERIFY(ProgrammeRules::clashes(block) == (std::vector<Clash>{{0, 5}, {0, 31}, {5, 31}}));
}

void TestProgrammeRules::clashOfALaterBlockComesBeforeARestrictionOfAnEarlierOne()
{
    Programme programme;
    programme.blocks[0].Alarms[0] = samples::alarm(9, 0, {Sunday});
    programme.blocks[2].Alarms[0] = samples::onWorkingDays(1, 0);
    programme.blocks[2].Alarms[1] = samples::onWorkingDays(1, 0);
    const auto violation = firstViolation(programme, hct7300);
    QVERIFY(violation->kind == Violation::Kind::Clash);
    QCOMPARE(violation->block, 2);
}

void TestProgrammeRules::specialDaysAreRefusedInModesZeroAndOne()
{
    // Every combination of the four flags but the empty one, beside the working days.
    for (unsigned combination = 0; combination < 16; ++combination) {
        Programme programme;
        Alarm& alarm = programme.blocks[0].Alarms[5];
        alarm = samples::onWorkingDays(9, 0);
        for (unsigned flag = 0; flag < 4; ++flag)
            alarm.flags[5 + flag] = (combination & (1U << flag)) != 0;
        QVERIFY(firstViolation(programme, hct7300).has_value() == (combination != 0));
    }
}

void TestProgrammeRules::singleWorkingDaysAreRefusedInModesTwoAndThree_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<unsigned>("workingDays");
    QTest::addColumn<bool>("refused");
    for (const int mode : {2, 3})
        for (unsigned days = 0; days < 32; ++days)
            QTest::addRow("mode %d, days %u", mode, days)
                << mode << days << (days != 0 && days != 31);
}

void TestProgrammeRules::singleWorkingDaysAreRefusedInModesTwoAndThree()
{
    QFETCH(int, mode);
    QFETCH(unsigned, workingDays);
    QFETCH(bool, refused);
    Programme programme;
    programme.blocks[1].Mode = static_cast<quint8>(mode);
    Alarm& alarm = programme.blocks[1].Alarms[31];
    alarm = samples::alarm(9, 0, {Sunday});
    for (unsigned day = 0; day < 5; ++day)
        alarm.flags[day] = (workingDays & (1U << day)) != 0;
    const auto violation = firstViolation(programme, hct7300);
    QCOMPARE(violation.has_value(), refused);
    if (violation)
        QCOMPARE(violation->text,
                 u"   No se ha podido realizar la configuración del equipo.\r\n"
                 "     En el Modo de Avisos %1, no se puede programar:\r\n"
                 "                 días sueltos entre lunes y viernes."_s.arg(mode));
}

void TestProgrammeRules::otherModesHaveNoRestriction()
{
    for (const int mode : {4, 5, 255}) {
        Programme programme;
        programme.blocks[0].Mode = static_cast<quint8>(mode);
        programme.blocks[0].Alarms[0] = samples::alarm(9, 0, {Monday, Sunday, OnHoliday});
        QVERIFY(!firstViolation(programme, hct7300));
    }
}

void TestProgrammeRules::hct7200HasNoRestriction()
{
    Programme programme;
    programme.blocks[0].Mode = 2;
    programme.blocks[0].Alarms[0] = samples::alarm(9, 0, {Monday});
    QVERIFY(!firstViolation(programme, hct7200));
}

void TestProgrammeRules::restrictionNamesTheModeOfTheFirstBlockThatBreaksIt()
{
    Programme programme;
    programme.blocks[1].Mode = 1;
    programme.blocks[1].Alarms[7] = samples::alarm(9, 0, {OnVacation});
    programme.blocks[2].Mode = 3;
    programme.blocks[2].Alarms[0] = samples::alarm(9, 0, {Monday});
    QCOMPARE(firstViolation(programme, hct7300)->text,
             u"   No se ha podido realizar la configuración del equipo.\r\n"
             "     En el Modo de Avisos 1, no se puede programar:\r\n"
             "          Sabados, Domingos, Festivos ni Vacaciones."_s);
}

void TestProgrammeRules::everyViolationIsTold()
{
    Programme programme;
    programme.blocks[0].Alarms[7] = samples::alarm(9, 0, {Saturday});
    programme.blocks[2].Alarms[4] = samples::alarm(9, 0, {Monday});
    programme.blocks[2].Alarms[6] = samples::alarm(9, 0, {OnVacation});
    QStringList found;
    for (const Violation& violation : violations(programme, hct7300))
        found += u"%1 %2 %3 %4"_s.arg(qToUnderlying(violation.kind))
                     .arg(violation.block)
                     .arg(violation.alarm)
                     .arg(violation.earlier);
    QCOMPARE(found, (QStringList{u"0 2 6 4"_s, u"1 0 7 -1"_s, u"1 2 6 -1"_s}));
    QCOMPARE(violations(programme, hct7200).size(), 1U);
}

void TestProgrammeRules::violationIsToldInOneLine()
{
    Programme programme;
    programme.blocks[0].Alarms[2] = samples::onWorkingDays(8, 5);
    programme.blocks[0].Alarms[3] = samples::onWorkingDays(8, 5);
    QCOMPARE(firstViolation(programme, hct7300)->reason,
             u"A la misma hora que el aviso 3, las 8:05."_s);
    programme.blocks[0].Alarms[3] = samples::alarm(9, 0, {Sunday});
    QCOMPARE(firstViolation(programme, hct7300)->reason,
             u"En el Modo de Avisos 0, no se puede programar: Sabados, Domingos, Festivos ni "
             "Vacaciones."_s);
    programme.blocks[0].Mode = 3;
    programme.blocks[0].Alarms[3] = samples::alarm(9, 0, {Monday});
    QCOMPARE(firstViolation(programme, hct7300)->reason,
             u"En el Modo de Avisos 3, no se puede programar: días sueltos entre lunes y "
             "viernes."_s);
}

void TestProgrammeRules::blockWithoutActiveAlarmCountsOne()
{
    Programme programme;
    programme.blocks[0].Alarms[4] = samples::alarm(9, 15, {});
    ProgrammeRules::NormaliseProgramme(programme);
    for (const AlarmBlock& block : programme.blocks)
        QCOMPARE(block.ActiveCountPlusOne, quint8{1});
}

void TestProgrammeRules::fullBlockCountsThirtyThree()
{
    Programme programme;
    int minute = 0;
    for (Alarm& alarm : programme.blocks[2].Alarms)
        alarm = samples::onWorkingDays(9, minute++);
    ProgrammeRules::NormaliseProgramme(programme);
    QCOMPARE(programme.blocks[2].ActiveCountPlusOne, quint8{33});
}

void TestProgrammeRules::alarmWithoutDaysIsClearedAndGoesToTheEnd()
{
    Programme programme;
    auto& alarms = programme.blocks[0].Alarms;
    alarms[0] = samples::alarm(6, 45, {});
    alarms[1] = samples::onWorkingDays(8, 0);
    alarms[31] = samples::alarm(7, 0, {OnVacation});
    ProgrammeRules::NormaliseProgramme(programme);
    QVERIFY(alarms[0] == samples::alarm(7, 0, {OnVacation}));
    QVERIFY(alarms[1] == samples::onWorkingDays(8, 0));
    for (std::size_t index = 2; index < 32; ++index)
        QVERIFY(alarms[index] == Alarm());
    QCOMPARE(programme.blocks[0].ActiveCountPlusOne, quint8{3});
}

void TestProgrammeRules::blockLeavesTheNextOneAlone()
{
    Programme programme;
    programme.blocks[1].Alarms[0] = samples::alarm(7, 30, {Sunday, OnHoliday});
    ProgrammeRules::NormaliseProgramme(programme);
    QVERIFY(programme.blocks[1].Alarms[0] == samples::alarm(7, 30, {Sunday, OnHoliday}));
    QCOMPARE(programme.blocks[1].ActiveCountPlusOne, quint8{2});
}

void TestProgrammeRules::activeAlarmsComeInOrderOfTime()
{
    Programme programme;
    auto& alarms = programme.blocks[0].Alarms;
    alarms[3] = samples::onWorkingDays(9, 5);
    alarms[10] = samples::onWorkingDays(9, 4);
    alarms[20] = samples::onWorkingDays(23, 59);
    alarms[30] = samples::onWorkingDays(0, 0);
    ProgrammeRules::NormaliseProgramme(programme);
    QVERIFY(alarms[0] == samples::onWorkingDays(0, 0));
    QVERIFY(alarms[1] == samples::onWorkingDays(9, 4));
    QVERIFY(alarms[2] == samples::onWorkingDays(9, 5));
    QVERIFY(alarms[3] == samples::onWorkingDays(23, 59));
}

void TestProgrammeRules::equalTimesKeepTheirOrder()
{
    Programme programme;
    auto& alarms = programme.blocks[0].Alarms;
    alarms[0] = samples::alarm(9, 0, {Monday});
    alarms[1] = samples::alarm(9, 0, {Friday});
    ProgrammeRules::NormaliseProgramme(programme);
    QVERIFY(alarms[0] == samples::alarm(9, 0, {Monday}));
    QVERIFY(alarms[1] == samples::alarm(9, 0, {Friday}));
}

void TestProgrammeRules::exchangeSortIsNotStable()
{
    // The early alarm in third place takes the first place of another, which lands behind its twin.
    Programme programme;
    auto& alarms = programme.blocks[0].Alarms;
    alarms[0] = samples::alarm(9, 0, {Monday});
    alarms[1] = samples::alarm(9, 0, {Friday});
    alarms[2] = samples::alarm(8, 0, {Tuesday});
    ProgrammeRules::NormaliseProgramme(programme);
    QVERIFY(alarms[0] == samples::alarm(8, 0, {Tuesday}));
    QVERIFY(alarms[1] == samples::alarm(9, 0, {Friday}));
    QVERIFY(alarms[2] == samples::alarm(9, 0, {Monday}));
}

QTEST_GUILESS_MAIN(TestProgrammeRules)
#include "TestProgrammeRules.moc"
