#include "ProgrammeMarks.h"
#include "ProgrammeSamples.h"

#include <QTest>

using namespace Qt::StringLiterals;
using enum DayFlag;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

class TestProgrammeMarks : public QObject {
    Q_OBJECT
private slots:
    void emptyProgrammeHasNoMarks();
    void bothAlarmsOfAClashAreMarked();
    void everyClashOfAnAlarmIsTold();
    void daysThatTheModeForbidsAreMarked();
    void hct7200ForbidsNoDays();
    void daysThatTheModeLosesAreMarked();
    void inactiveAlarmIsNeverMarked();
    void datesThatDoNotExistAreMarked();
    void halfPeriodsAreMarked();
    void marksAreInTheOrderOfTheWindow();
    void rowsAreCounted();
};

void TestProgrammeMarks::emptyProgrammeHasNoMarks()
{
    for (const ClockModel model : {hct7200, hct7300})
        QCOMPARE(ProgrammeMarks({}, model).count(), 0);
}

void TestProgrammeMarks::bothAlarmsOfAClashAreMarked()
{
    Programme programme;
    programme.blocks[1].Alarms[3] = samples::alarm(8, 5, {Monday});
    programme.blocks[1].Alarms[30] = samples::alarm(8, 5, {Friday});
    const ProgrammeMarks marks(programme, hct7200);
    QCOMPARE(marks.alarmReason(1, 3), u"A la misma hora que el aviso 31, las 8:05."_s);
    QCOMPARE(marks.alarmReason(1, 30), u"A la misma hora que el aviso 4, las 8:05."_s);
    QCOMPARE(marks.alarmReason(0, 3), QString());
    QCOMPARE(marks.count(), 2);
}

void TestProgrammeMarks::everyClashOfAnAlarmIsTold()
{
    Programme programme;
    for (const std::size_t row : {0U, 1U, 2U})
        programme.blocks[0].Alarms[row] = samples::onWorkingDays(9, 0);
    QCOMPARE(ProgrammeMarks(programme, hct7200).alarmReason(0, 1),
             u"A la misma hora que el aviso 1, las 9:00. A la misma hora que el aviso 3, las "
             "9:00."_s);
}

void TestProgrammeMarks::daysThatTheModeForbidsAreMarked()
{
    Programme programme;
    programme.blocks[0].Alarms[0] = samples::alarm(9, 0, {Saturday});
    programme.blocks[1].Mode = 2;
    programme.blocks[1].Alarms[0] = samples::alarm(9, 0, {Monday});
    const ProgrammeMarks marks(programme, hct7300);
    QCOMPARE(marks.alarmReason(0, 0),
             u"En el Modo de Avisos 0, no se puede programar: Sabados, Domingos, Festivos ni "
             "Vacaciones."_s);
    QCOMPARE(marks.alarmReason(1, 0),
             u"En el Modo de Avisos 2, no se puede programar: días sueltos entre lunes y "
             "viernes."_s);
}

void TestProgrammeMarks::hct7200ForbidsNoDays()
{
    Programme programme;
    programme.blocks[1].Mode = 2;
    programme.blocks[1].Alarms[0] = samples::alarm(9, 0, {Monday});
    QCOMPARE(ProgrammeMarks(programme, hct7200).count(), 0);
}

void TestProgrammeMarks::daysThatTheModeLosesAreMarked()
{
    Programme programme;
    programme.blocks[0].Mode = 4;
    programme.blocks[0].Alarms[0] = samples::alarm(9, 0, {Monday, Saturday});
    programme.blocks[0].Alarms[1] = samples::alarm(9, 30, {Saturday});
    const ProgrammeMarks marks(programme, hct7300);
    QCOMPARE(marks.alarmReason(0, 0),
             u"En el modo 4 no se guardan ni se envían días sueltos entre lunes y viernes."_s);
    QCOMPARE(marks.count(), 1);
}

void TestProgrammeMarks::inactiveAlarmIsNeverMarked()
{
    Programme programme;
    programme.blocks[0].Alarms[0] = samples::onWorkingDays(9, 0);
    programme.blocks[0].Alarms[1] = samples::alarm(9, 0, {});
    QCOMPARE(ProgrammeMarks(programme, hct7300).count(), 0);
}

void TestProgrammeMarks::datesThatDoNotExistAreMarked()
{
    Programme programme;
    programme.table.holidays[2] = {31, 4};
    programme.table.holidays[3] = {0, 4};
    programme.table.vacations[1] = {30, 2, 5, 0};
    const ProgrammeMarks marks(programme, hct7200);
    QCOMPARE(marks.holidayReason(2), u"El 31/04 no existe."_s);
    QCOMPARE(marks.holidayReason(3), u"Tiene mes y no tiene día."_s);
    QCOMPARE(marks.vacationReason(1),
             u"Inicio: el 30/02 no existe. Fin: tiene día y no tiene mes."_s);
    QCOMPARE(marks.count(), 3);
}

void TestProgrammeMarks::halfPeriodsAreMarked()
{
    Programme programme;
    programme.table.vacations[0] = {1, 8, 0, 0};
    programme.table.vacations[7] = {0, 0, 31, 8};
    const ProgrammeMarks marks(programme, hct7200);
    QCOMPARE(marks.vacationReason(0), u"Tiene inicio y no tiene fin."_s);
    QCOMPARE(marks.vacationReason(7), u"Tiene fin y no tiene inicio."_s);
}

void TestProgrammeMarks::marksAreInTheOrderOfTheWindow()
{
    Programme programme;
    programme.table.holidays[1] = {31, 4};
    programme.table.vacations[2] = {1, 8, 0, 0};
    programme.blocks[0].Alarms[5] = samples::alarm(9, 0, {Saturday});
    programme.blocks[0].Alarms[6] = samples::onWorkingDays(9, 0);
    QStringList names;
    const ProgrammeMarks marks(programme, hct7300);
    for (const ProgrammeMarks::Mark& mark : marks.all())
        names.append(ProgrammeMarks::nameOf(mark));
    QCOMPARE(names, (QStringList{u"Salida 1, aviso 6"_s, u"Salida 1, aviso 7"_s, u"Festivo 2"_s,
                                 u"Período de vacaciones 3"_s}));
}

void TestProgrammeMarks::rowsAreCounted()
{
    Programme programme;
    QCOMPARE(ProgrammeMarks(programme, hct7300).countText(), u"Sin problemas"_s);
    programme.blocks[0].Alarms[0] = samples::alarm(9, 0, {Saturday});
    QCOMPARE(ProgrammeMarks(programme, hct7300).countText(), u"1 problema"_s);
    // Wrong for two reasons, and one row all the same.
    programme.blocks[0].Alarms[1] = samples::alarm(9, 0, {Sunday});
    QCOMPARE(ProgrammeMarks(programme, hct7300).countText(), u"2 problemas"_s);
}

QTEST_GUILESS_MAIN(TestProgrammeMarks)
#include "TestProgrammeMarks.moc"
