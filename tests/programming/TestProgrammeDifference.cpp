#include "ProgrammeDifference.h"
#include "ProgrammeSamples.h"
#include "ProgrammeTexts.h"

#include <QTest>

using namespace Qt::StringLiterals;
using enum DayFlag;
using ProgrammeDifference::Entry;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

namespace {

QStringList texts(const Programme& before, const Programme& after, ClockModel model)
{
    QStringList lines;
    for (const Entry& entry : ProgrammeDifference::between(before, after, model))
        lines.append(entry.text);
    return lines;
}

} // namespace

class TestProgrammeDifference : public QObject {
    Q_OBJECT
private slots:
    void init() { m_before = m_after = Programme(); }

    void equalProgrammesHaveNone();
    void orderOfRowsAndInactiveRowsMakeNoDifference();
    void alarmIsAddedWithItsDays();
    void alarmIsRemoved();
    void alarmWithOtherDaysIsChanged();
    void alarmsAreToldByBlockAndTime();
    void twinsWithTheSameDaysArePairedFirst();
    void entryLeadsToItsRows();
    void specialDaysDoNotExistForTheHct7200();
    void specialDaysAreComparedForTheHct7300();
    void dayThatTheModeDoesNotTransmitMakesNoDifference();
    void durationAndModeOfTheHct7200AreItsOwn();
    void durationAndModeOfTheHct7300AreCompared();
    void holidaysAreComparedAsASet();
    void vacationsAreComparedByTheirStart();
    void daysAreWrittenAsPeopleSayThem_data();
    void daysAreWrittenAsPeopleSayThem();

private:
    Programme m_before;
    Programme m_after;
};

void TestProgrammeDifference::equalProgrammesHaveNone()
{
    m_before.blocks[0].Alarms[3] = samples::onWorkingDays(9, 5);
    m_before.table.holidays[2] = {1, 5};
    QCOMPARE(texts(m_before, m_before, hct7200), QStringList());
}

void TestProgrammeDifference::orderOfRowsAndInactiveRowsMakeNoDifference()
{
    m_before.blocks[1].Alarms[31] = samples::alarm(9, 5, {Monday});
    m_before.blocks[1].Alarms[4] = samples::alarm(10, 0, {Tuesday});
    m_before.blocks[1].Alarms[5] = samples::alarm(7, 7, {});
    m_after.blocks[1].Alarms[0] = samples::alarm(10, 0, {Tuesday});
    m_after.blocks[1].Alarms[1] = samples::alarm(9, 5, {Monday});
    m_after.blocks[1].ActiveCountPlusOne = 3;
    QCOMPARE(texts(m_before, m_after, hct7200), QStringList());
    QCOMPARE(texts(m_before, m_after, hct7300), QStringList());
}

void TestProgrammeDifference::alarmIsAddedWithItsDays()
{
    m_after.blocks[0].Alarms[0] = samples::onWorkingDays(9, 5);
    QCOMPARE(texts(m_before, m_after, hct7200),
             QStringList{u"Salida 1: añadido 9:05 lunes a viernes"_s});
}

void TestProgrammeDifference::alarmIsRemoved()
{
    m_before.blocks[2].Alarms[9] = samples::alarm(17, 30, {Monday, Wednesday});
    QCOMPARE(texts(m_before, m_after, hct7200),
             QStringList{u"Salida 3: quitado 17:30 lunes y miércoles"_s});
}

void TestProgrammeDifference::alarmWithOtherDaysIsChanged()
{
    m_before.blocks[0].Alarms[0] = samples::onWorkingDays(9, 5);
    m_after.blocks[0].Alarms[8] = samples::alarm(9, 5, {Friday});
    QCOMPARE(texts(m_before, m_after, hct7200),
             QStringList{u"Salida 1: cambiado 9:05, antes lunes a viernes, ahora viernes"_s});
}

void TestProgrammeDifference::alarmsAreToldByBlockAndTime()
{
    m_after.blocks[1].Alarms[0] = samples::alarm(8, 0, {Monday});
    m_after.blocks[0].Alarms[0] = samples::alarm(12, 0, {Monday});
    m_before.blocks[0].Alarms[0] = samples::alarm(11, 0, {Monday});
    m_after.blocks[0].Alarms[1] = samples::alarm(9, 59, {Monday});
    QCOMPARE(texts(m_before, m_after, hct7200),
             (QStringList{u"Salida 1: añadido 9:59 lunes"_s, u"Salida 1: quitado 11:00 lunes"_s,
                          u"Salida 1: añadido 12:00 lunes"_s, u"Salida 2: añadido 8:00 lunes"_s}));
}

void TestProgrammeDifference::twinsWithTheSameDaysArePairedFirst()
{
    m_before.blocks[0].Alarms[0] = samples::alarm(9, 0, {Monday});
    m_before.blocks[0].Alarms[1] = samples::alarm(9, 0, {Tuesday});
    m_after.blocks[0].Alarms[0] = samples::alarm(9, 0, {Tuesday});
    QCOMPARE(texts(m_before, m_after, hct7200), QStringList{u"Salida 1: quitado 9:00 lunes"_s});
}

void TestProgrammeDifference::entryLeadsToItsRows()
{
    m_before.blocks[1].Alarms[7] = samples::alarm(9, 0, {Monday});
    m_after.blocks[1].Alarms[30] = samples::alarm(9, 0, {Tuesday});
    m_after.table.holidays[15] = {24, 12};
    const QList<Entry> entries = ProgrammeDifference::between(m_before, m_after, hct7200);
    QCOMPARE(entries.size(), 2);
    QVERIFY(entries[0].kind == Entry::Kind::Changed);
    QVERIFY(entries[0].what == Entry::What::Alarm);
    QCOMPARE(entries[0].block, 1);
    QCOMPARE(entries[0].rowBefore, 7);
    QCOMPARE(entries[0].rowAfter, 30);
    QVERIFY(entries[1].kind == Entry::Kind::Added);
    QVERIFY(entries[1].what == Entry::What::Holiday);
    QCOMPARE(entries[1].block, -1);
    QCOMPARE(entries[1].rowBefore, -1);
    QCOMPARE(entries[1].rowAfter, 15);
}

void TestProgrammeDifference::specialDaysDoNotExistForTheHct7200()
{
    m_before.blocks[0].Alarms[0] = samples::alarm(9, 0, {Monday});
    m_after.blocks[0].Alarms[0] = samples::alarm(9, 0, {Monday, Saturday, OnHoliday});
    m_after.blocks[0].Alarms[1] = samples::alarm(10, 0, {Sunday});
    QCOMPARE(texts(m_before, m_after, hct7200), QStringList());
}

void TestProgrammeDifference::specialDaysAreComparedForTheHct7300()
{
    m_before.blocks[0].Mode = m_after.blocks[0].Mode = 2;
    m_after.blocks[0].Alarms[1] = samples::onWorkingDays(10, 0);
    m_after.blocks[0].Alarms[1].set(Saturday, true);
    m_after.blocks[0].Alarms[1].set(OnVacation, true);
    QCOMPARE(texts(m_before, m_after, hct7300),
             QStringList{u"Salida 1: añadido 10:00 lunes a sábado y vacaciones"_s});
}

void TestProgrammeDifference::dayThatTheModeDoesNotTransmitMakesNoDifference()
{
    m_before.blocks[0].Mode = m_after.blocks[0].Mode = 4;
    m_before.blocks[0].Alarms[0] = samples::alarm(9, 0, {Sunday});
    m_after.blocks[0].Alarms[0] = samples::alarm(9, 0, {Monday, Sunday});
    QCOMPARE(texts(m_before, m_after, hct7300), QStringList());
}

void TestProgrammeDifference::durationAndModeOfTheHct7200AreItsOwn()
{
    m_after.blocks[0].Duration = 9;
    m_after.blocks[2].Mode = 1;
    QCOMPARE(texts(m_before, m_after, hct7200), QStringList());
}

void TestProgrammeDifference::durationAndModeOfTheHct7300AreCompared()
{
    m_before.blocks[1].Duration = 5;
    m_after.blocks[1].Duration = 255;
    m_after.blocks[2].Mode = 3;
    QCOMPARE(texts(m_before, m_after, hct7300),
             (QStringList{u"Salida 2: cambiada la duración, antes 5, ahora 255"_s,
                          u"Salida 3: cambiado el modo, antes 0, ahora 3"_s}));
}

void TestProgrammeDifference::holidaysAreComparedAsASet()
{
    m_before.table.holidays[0] = {1, 5};
    m_before.table.holidays[1] = {6, 1};
    m_before.table.holidays[7] = {1, 5};
    m_after.table.holidays[3] = {1, 5};
    m_after.table.holidays[4] = {24, 12};
    m_after.table.holidays[5] = {2, 2};
    QCOMPARE(texts(m_before, m_after, hct7200),
             (QStringList{u"Festivos: quitado 06/01"_s, u"Festivos: añadido 02/02"_s,
                          u"Festivos: añadido 24/12"_s}));
}

void TestProgrammeDifference::vacationsAreComparedByTheirStart()
{
    m_before.table.vacations[0] = {23, 12, 7, 1};
    m_before.table.vacations[1] = {25, 6, 8, 9};
    m_before.table.vacations[2] = {26, 3, 4, 4};
    m_after.table.vacations[5] = {25, 6, 10, 9};
    m_after.table.vacations[6] = {26, 3, 4, 4};
    m_after.table.vacations[7] = {31, 10, 2, 11};
    QCOMPARE(texts(m_before, m_after, hct7200),
             (QStringList{u"Vacaciones: cambiado 25/06, antes a 08/09, ahora a 10/09"_s,
                          u"Vacaciones: añadido 31/10 a 02/11"_s,
                          u"Vacaciones: quitado 23/12 a 07/01"_s}));
}

void TestProgrammeDifference::daysAreWrittenAsPeopleSayThem_data()
{
    QTest::addColumn<Alarm>("alarm");
    QTest::addColumn<QString>("text");
    QTest::newRow("two days in a row")
        << samples::alarm(9, 0, {Monday, Tuesday}) << u"lunes y martes"_s;
    QTest::newRow("three days in a row")
        << samples::alarm(9, 0, {Wednesday, Thursday, Friday}) << u"miércoles a viernes"_s;
    QTest::newRow("a gap") << samples::alarm(9, 0, {Monday, Tuesday, Wednesday, Friday})
                           << u"lunes a miércoles y viernes"_s;
    QTest::newRow("the whole week and both others")
        << samples::alarm(9, 0,
                          {Monday, Tuesday, Wednesday, Thursday, Friday, Saturday, Sunday,
                           OnHoliday, OnVacation})
        << u"lunes a domingo, festivos y vacaciones"_s;
    QTest::newRow("no range goes on into the holidays")
        << samples::alarm(9, 0, {Sunday, OnHoliday, OnVacation})
        << u"domingo, festivos y vacaciones"_s;
}

void TestProgrammeDifference::daysAreWrittenAsPeopleSayThem()
{
    QFETCH(Alarm, alarm);
    QFETCH(QString, text);
    QCOMPARE(ProgrammeTexts::days(alarm), text);
}

QTEST_GUILESS_MAIN(TestProgrammeDifference)
#include "TestProgrammeDifference.moc"
