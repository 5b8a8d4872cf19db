#include "AlarmEncoding.h"
#include "ProgrammeMessages.h"
#include "ProgrammeSamples.h"
#include "StatusBlock.h"

#include <QTest>

using enum DayFlag;

class TestAlarmEncoding : public QObject {
    Q_OBJECT
private slots:
    void alarmTravelsInTwoBytes_data();
    void alarmTravelsInTwoBytes();
    void twoBytesBecomeAnAlarm_data();
    void twoBytesBecomeAnAlarm();
    void hourAbove31AndMinuteAbove63LoseTheirHighBits();
    void maskOfTheFile_data();
    void maskOfTheFile();
    void maskOfSingleDaysLeavesHolidaysAndVacations();
    void clearBitOfWorkingDaysLeavesSingleDays();
    void blocksComeFromTheirPlacesInTheStatusBlock();
    void shortStatusBlockReadsAsZeros();
};

Q_DECLARE_METATYPE(Alarm)

void TestAlarmEncoding::alarmTravelsInTwoBytes_data()
{
    QTest::addColumn<ClockModel>("model");
    QTest::addColumn<int>("mode");
    QTest::addColumn<Alarm>("alarm");
    QTest::addColumn<QByteArray>("bytes");

    const auto hct7200 = ClockModel::Hct7200;
    const auto hct7300 = ClockModel::Hct7300;
    const auto row = [](const char* name, ClockModel model, int mode, const Alarm& alarm,
                        const char* hex) {
        QTest::newRow(name) << model << mode << alarm << QByteArray::fromHex(hex);
    };
    row("HCT-7200, no day", hct7200, 0, samples::alarm(23, 59, {}), "173b");
    row("HCT-7200, Monday", hct7200, 0, samples::alarm(0, 0, {Monday}), "8000");
    row("HCT-7200, Tuesday", hct7200, 0, samples::alarm(0, 0, {Tuesday}), "4000");
    row("HCT-7200, Wednesday", hct7200, 0, samples::alarm(0, 0, {Wednesday}), "2000");
    row("HCT-7200, Thursday", hct7200, 0, samples::alarm(0, 0, {Thursday}), "0080");
    row("HCT-7200, Friday", hct7200, 0, samples::alarm(0, 0, {Friday}), "0040");
    row("HCT-7200, 8:45 all days", hct7200, 1, samples::onWorkingDays(8, 45), "e8ed");
    row("HCT-7200, mode makes no difference", hct7200, 7, samples::onWorkingDays(8, 45), "e8ed");
    row("HCT-7300, mode 0", hct7300, 0, samples::onWorkingDays(8, 45), "e8ed");
    row("HCT-7300, mode 1, weekend is dropped", hct7300, 1,
        samples::alarm(8, 45, {Tuesday, Friday, Saturday, Sunday, OnHoliday, OnVacation}), "486d");
    row("HCT-7300, mode 2, Saturday", hct7300, 2, samples::alarm(8, 45, {Saturday}), "882d");
    row("HCT-7300, mode 2, Sunday", hct7300, 2, samples::alarm(8, 45, {Sunday}), "482d");
    row("HCT-7300, mode 3, holidays", hct7300, 3, samples::alarm(8, 45, {OnHoliday}), "282d");
    row("HCT-7300, mode 4, vacations", hct7300, 4, samples::alarm(8, 45, {OnVacation}), "08ad");
    row("HCT-7300, mode 2, all working days", hct7300, 2, samples::onWorkingDays(8, 45), "086d");
    row("HCT-7300, mode 255, four working days are dropped", hct7300, 255,
        samples::alarm(8, 45, {Monday, Tuesday, Wednesday, Thursday}), "082d");
}

void TestAlarmEncoding::alarmTravelsInTwoBytes()
{
    QFETCH(ClockModel, model);
    QFETCH(int, mode);
    QFETCH(Alarm, alarm);
    QFETCH(QByteArray, bytes);
    const auto encoded = AlarmEncoding::of(model).encode(alarm, static_cast<quint8>(mode));
    QCOMPARE(encoded.first, static_cast<quint8>(bytes[0]));
    QCOMPARE(encoded.second, static_cast<quint8>(bytes[1]));
}

void TestAlarmEncoding::twoBytesBecomeAnAlarm_data()
{
    QTest::addColumn<ClockModel>("model");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Alarm>("alarm");

    const auto row = [](const char* name, ClockModel model, int mode, const char* hex,
                        const Alarm& alarm) {
        QTest::newRow(name) << model << mode << QByteArray::fromHex(hex) << alarm;
    };
    const auto hct7200 = ClockModel::Hct7200;
    const auto hct7300 = ClockModel::Hct7300;
    row("HCT-7200, minute 45 needs bit 5", hct7200, 0, "882d", samples::alarm(8, 45, {Monday}));
    row("HCT-7200, all bits", hct7200, 5, "ffff",
        samples::alarm(31, 63, {Monday, Tuesday, Wednesday, Thursday, Friday}));
    row("HCT-7300, mode 0", hct7300, 0, "4740", samples::alarm(7, 0, {Tuesday, Friday}));
    row("HCT-7300, mode 1", hct7300, 1, "2781", samples::alarm(7, 1, {Wednesday, Thursday}));
    row("HCT-7300, mode 2, Saturday and vacations", hct7300, 2, "8781",
        samples::alarm(7, 1, {Saturday, OnVacation}));
    row("HCT-7300, mode 2, all bits", hct7300, 2, "ffff",
        samples::alarm(31, 63,
                       {Monday, Tuesday, Wednesday, Thursday, Friday, Saturday, Sunday, OnHoliday,
                        OnVacation}));
}

void TestAlarmEncoding::twoBytesBecomeAnAlarm()
{
    QFETCH(ClockModel, model);
    QFETCH(int, mode);
    QFETCH(QByteArray, bytes);
    QFETCH(Alarm, alarm);
    const Alarm decoded = AlarmEncoding::of(model).decode(
        {static_cast<quint8>(bytes[0]), static_cast<quint8>(bytes[1])}, static_cast<quint8>(mode));
    QVERIFY(decoded == alarm);
}

void TestAlarmEncoding::hourAbove31AndMinuteAbove63LoseTheirHighBits()
{
    for (const ClockModel model : {ClockModel::Hct7200, ClockModel::Hct7300}) {
        const auto bytes = AlarmEncoding::of(model).encode(samples::alarm(33, 65, {}), 0);
        QCOMPARE(bytes.first, quint8{0x01});
        QCOMPARE(bytes.second, quint8{0x01});
    }
}

void TestAlarmEncoding::maskOfTheFile_data()
{
    QTest::addColumn<ClockModel>("model");
    QTest::addColumn<int>("mode");
    QTest::addColumn<Alarm>("alarm");
    QTest::addColumn<int>("mask");

    const auto hct7300 = ClockModel::Hct7300;
    QTest::newRow("HCT-7200") << ClockModel::Hct7200 << 9 << samples::alarm(0, 0, {Monday, Friday})
                              << 0x11;
    QTest::newRow("HCT-7200, Tuesday to Thursday")
        << ClockModel::Hct7200 << 0 << samples::alarm(0, 0, {Tuesday, Wednesday, Thursday}) << 0x0E;
    QTest::newRow("HCT-7300, mode 1")
        << hct7300 << 1 << samples::alarm(0, 0, {Monday, Saturday, OnHoliday}) << 0x01;
    QTest::newRow("HCT-7300, mode 2, four special days")
        << hct7300 << 2 << samples::alarm(0, 0, {Saturday, Sunday, OnHoliday, OnVacation}) << 0x0F;
    QTest::newRow("HCT-7300, mode 2, one special day and the working days")
        << hct7300 << 2
        << samples::alarm(0, 0, {OnVacation, Monday, Tuesday, Wednesday, Thursday, Friday}) << 0x18;
    QTest::newRow("HCT-7300, mode 2, single working day is lost")
        << hct7300 << 2 << samples::alarm(0, 0, {Monday, OnHoliday}) << 0x04;
}

void TestAlarmEncoding::maskOfTheFile()
{
    QFETCH(ClockModel, model);
    QFETCH(int, mode);
    QFETCH(Alarm, alarm);
    QFETCH(int, mask);
    QCOMPARE(int{AlarmEncoding::of(model).mask(alarm, static_cast<quint8>(mode))}, mask);
}

void TestAlarmEncoding::maskOfSingleDaysLeavesHolidaysAndVacations()
{
    Alarm alarm = samples::alarm(0, 0, {Monday, Saturday, Sunday, OnHoliday, OnVacation});
    AlarmEncoding::of(ClockModel::Hct7300).applyMask(alarm, 0x02, 1);
    QVERIFY(alarm == samples::alarm(0, 0, {Tuesday, OnHoliday, OnVacation}));
}

void TestAlarmEncoding::clearBitOfWorkingDaysLeavesSingleDays()
{
    Alarm alarm = samples::alarm(0, 0, {Monday, Thursday, Sunday});
    AlarmEncoding::of(ClockModel::Hct7300).applyMask(alarm, 0x05, 2);
    QVERIFY(alarm == samples::alarm(0, 0, {Monday, Thursday, Saturday, OnHoliday}));
    AlarmEncoding::of(ClockModel::Hct7300).applyMask(alarm, 0x10, 2);
    QVERIFY(alarm == samples::onWorkingDays(0, 0));
}

void TestAlarmEncoding::blocksComeFromTheirPlacesInTheStatusBlock()
{
    QByteArray status = samples::generalData(ClockModel::Hct7300);
    status[14] = 5;
    status[15] = 1;
    status[18] = 9;
    status[19] = 2;
    status[20] = static_cast<char>(0x88); // block 0, alarm 0
    status[21] = 30;
    status[20 + 66 * 2 + 62] = static_cast<char>(0x94); // block 2, alarm 31
    status[20 + 66 * 2 + 63] = static_cast<char>(0xBB);

    Programme programme;
    ProgrammeMessages::LoadBlocksFromStatusBlock(programme, StatusBlock(status),
                                                 ClockModel::Hct7300);
    QCOMPARE(programme.blocks[0].Duration, quint8{5});
    QCOMPARE(programme.blocks[0].Mode, quint8{1});
    QVERIFY(programme.blocks[0].Alarms[0] == samples::alarm(8, 30, {Monday}));
    QCOMPARE(programme.blocks[2].Duration, quint8{9});
    QCOMPARE(programme.blocks[2].Mode, quint8{2});
    QVERIFY(programme.blocks[2].Alarms[31] == samples::alarm(20, 59, {Saturday, OnVacation}));
    QVERIFY(programme.blocks[1] == AlarmBlock());
}

void TestAlarmEncoding::shortStatusBlockReadsAsZeros()
{
    Programme programme;
    ProgrammeMessages::LoadBlocksFromStatusBlock(programme, StatusBlock(QByteArray(5, '\xff')),
                                                 ClockModel::Hct7200);
    QVERIFY(programme == Programme());
}

QTEST_GUILESS_MAIN(TestAlarmEncoding)
#include "TestAlarmEncoding.moc"
