#include "ModelChange.h"
#include "ProgrammeSamples.h"

#include <QTest>

using namespace Qt::StringLiterals;
using enum DayFlag;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

class TestModelChange : public QObject {
    Q_OBJECT
private slots:
    void workingDaysSurviveBothWays();
    void specialDaysAreLostForTheHct7200();
    void modesThatTheHct7200LacksAreTold();
    void daysThatTheModeForbidsAreToldForTheHct7300();
    void durationsAndModesOfBothModelsStay();
    void modesThatTheHct7200LacksAreGone();
    void daysThatTheModeForbidsAreNotInTheFileOfTheHct7300_data();
    void daysThatTheModeForbidsAreNotInTheFileOfTheHct7300();
    void fileOfTheHct7200HoldsEverything();
};

void TestModelChange::workingDaysSurviveBothWays()
{
    Programme programme;
    programme.blocks[0].Alarms[0] = samples::alarm(9, 0, {Monday, Friday});
    for (const ClockModel model : {hct7200, hct7300}) {
        QCOMPARE(ModelChange::losses(programme, model), QStringList());
        QVERIFY(ModelChange::converted(programme, model) == programme);
    }
}

void TestModelChange::specialDaysAreLostForTheHct7200()
{
    Programme programme;
    programme.blocks[0].Alarms[0] = samples::alarm(9, 0, {Monday, Sunday});
    programme.blocks[1].Alarms[0] = samples::alarm(9, 0, {Saturday});
    programme.blocks[1].Alarms[1] = samples::alarm(9, 0, {OnHoliday, OnVacation});
    QCOMPARE(
        ModelChange::losses(programme, hct7200),
        (QStringList{u"Salida 1: un aviso pierde sábado, domingo, festivos o vacaciones."_s,
                     u"Salida 2: 2 avisos pierden sábado, domingo, festivos o vacaciones."_s}));
    const Programme converted = ModelChange::converted(programme, hct7200);
    QVERIFY(converted.blocks[0].Alarms[0] == samples::alarm(9, 0, {Monday}));
    QVERIFY(converted.blocks[1].Alarms[0] == samples::alarm(9, 0, {}));
}

void TestModelChange::modesThatTheHct7200LacksAreTold()
{
    Programme programme;
    programme.blocks[0].Mode = 1;
    programme.blocks[2].Mode = 2;
    QCOMPARE(ModelChange::losses(programme, hct7200),
             QStringList{u"Salida 3: el HCT-7200 no tiene el modo 2."_s});
}

void TestModelChange::daysThatTheModeForbidsAreToldForTheHct7300()
{
    Programme programme;
    programme.blocks[0].Mode = 1;
    programme.blocks[0].Alarms[0] = samples::alarm(9, 0, {Monday});
    programme.blocks[1].Mode = 4;
    programme.blocks[1].Alarms[0] = samples::alarm(9, 0, {Monday});
    programme.blocks[1].Alarms[1] = samples::onWorkingDays(10, 0);
    QCOMPARE(ModelChange::losses(programme, hct7300),
             QStringList{u"Salida 2: en el modo 4, un aviso pierde sus días sueltos entre lunes y "
                         "viernes."_s});
}

void TestModelChange::durationsAndModesOfBothModelsStay()
{
    Programme programme;
    programme.blocks[0].Duration = 7;
    programme.blocks[0].Mode = 1;
    QVERIFY(ModelChange::converted(programme, hct7200) == programme);
    programme.blocks[0].Mode = 4;
    QVERIFY(ModelChange::converted(programme, hct7300) == programme);
}

void TestModelChange::modesThatTheHct7200LacksAreGone()
{
    // A file with such a mode would be taken for one of the HCT-7300, and its days for others.
    Programme programme;
    programme.blocks[2].Mode = 2;
    QCOMPARE(ModelChange::converted(programme, hct7200).blocks[2].Mode, quint8{0});
}

void TestModelChange::daysThatTheModeForbidsAreNotInTheFileOfTheHct7300_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<Alarm>("alarm");
    QTest::addColumn<QStringList>("losses");
    QTest::newRow("single day, mode 2")
        << 2 << samples::alarm(9, 0, {Monday, Saturday})
        << QStringList{
               u"Salida 2: en el modo 2, un aviso pierde sus días sueltos entre lunes y viernes."_s};
    QTest::newRow("Saturday, mode 1")
        << 1 << samples::alarm(9, 0, {Monday, Saturday})
        << QStringList{
               u"Salida 2: en el modo 1, un aviso pierde sábado, domingo, festivos o vacaciones."_s};
    QTest::newRow("single day, mode 0") << 0 << samples::alarm(9, 0, {Monday}) << QStringList();
    QTest::newRow("Saturday, mode 2") << 2 << samples::alarm(9, 0, {Saturday}) << QStringList();
}

void TestModelChange::daysThatTheModeForbidsAreNotInTheFileOfTheHct7300()
{
    QFETCH(int, mode);
    QFETCH(Alarm, alarm);
    Programme programme;
    programme.blocks[1].Mode = static_cast<quint8>(mode);
    programme.blocks[1].Alarms[4] = alarm;
    QTEST(ModelChange::lossesInFile(programme, hct7300), "losses");
}

void TestModelChange::fileOfTheHct7200HoldsEverything()
{
    Programme programme;
    programme.blocks[0].Mode = 7;
    programme.blocks[0].Alarms[0] = samples::alarm(9, 0, {Monday});
    QCOMPARE(ModelChange::lossesInFile(programme, hct7200), QStringList());
}

QTEST_GUILESS_MAIN(TestModelChange)
#include "TestModelChange.moc"
