#include "SimulatedClock.h"

#include <QTest>

using namespace simulator;
using namespace Qt::StringLiterals;

namespace {

QDateTime moment(const char* text)
{
    return QDateTime::fromString(QString::fromLatin1(text), Qt::ISODate);
}

} // namespace

class TestSimulatedClock : public QObject {
    Q_OBJECT

private slots:
    void statusBlockHasItsBytesInPlace();
    void statusBlockCarriesTheProgramme();
    void clockRunsFromWhereItWasSet();
    void frozenClockStandsStillAndGoesOnFromThere();
    void bellRingsForItsDuration_data();
    void bellRingsForItsDuration();
    void intermittentBellSoundsEverySecondSecond();
    void bellRingsPastMidnightByTheDayItStarted();
    void hct7300RingsOnItsSpecialDays_data();
    void hct7300RingsOnItsSpecialDays();
    void manualOperationHoldsTheOutputs();
    void commandInAutomaticModeWaitsForManualOperation();
    void flagBitTwoTellsManualOperation();
    void heldByteStandsInTheStatusBlock();
    void blockOfAnotherFamilyHasFiveBytes();
    void demonstrationMovesOutputsAndInputs();
};

void TestSimulatedClock::statusBlockHasItsBytesInPlace()
{
    SimulatedClock clock(Model::Hct7300);
    clock.setFrozen(true);
    clock.setDateTime(moment("2026-11-21T14:35:57"));
    clock.setInputs(0x90);
    clock.setFlags(0x83);
    const QByteArray block = clock.statusBlock();
    QCOMPARE(block.size(), 220);
    QCOMPARE(block.left(14).toHex(), QByteArray("0000000b0039230e06150b1a1f00"));
    QCOMPARE(block.mid(218).toHex(), QByteArray("9083"));
}

void TestSimulatedClock::statusBlockCarriesTheProgramme()
{
    SimulatedClock clock(Model::Hct7200);
    AlarmBlock& block = clock.programme().blocks[1];
    block.duration = 7;
    block.mode = 1;
    block.setAlarm(0, 8, 30, 0x1F);
    block.setAlarm(31, 23, 59, 0x11);
    const QByteArray status = clock.statusBlock();
    QCOMPARE(status.mid(14, 6).toHex(), QByteArray("000007010000"));
    QCOMPARE(status.mid(20 + 66, 2).toHex(), QByteArray("e8de"));
    QCOMPARE(status.mid(20 + 66 + 62, 2).toHex(), QByteArray("977b"));
    QCOMPARE(status.mid(20, 66), QByteArray(66, '\0'));
}

void TestSimulatedClock::clockRunsFromWhereItWasSet()
{
    QDateTime now = moment("2026-11-21T10:00:00");
    SimulatedClock clock(Model::Hct7200, [&now] { return now; });
    QCOMPARE(clock.dateTime().toString(Qt::ISODate), u"2026-11-21T10:00:00Z"_s);
    clock.setDateTime(moment("1999-12-31T23:59:50"));
    now = now.addSecs(15);
    QCOMPARE(clock.dateTime().toString(Qt::ISODate), u"2000-01-01T00:00:05Z"_s);
}

void TestSimulatedClock::frozenClockStandsStillAndGoesOnFromThere()
{
    QDateTime now = moment("2026-11-21T10:00:00");
    SimulatedClock clock(Model::Hct7200, [&now] { return now; });
    clock.setFrozen(true);
    now = now.addSecs(100);
    QCOMPARE(clock.dateTime().toString(Qt::ISODate), u"2026-11-21T10:00:00Z"_s);
    clock.setFrozen(false);
    now = now.addSecs(1);
    QCOMPARE(clock.dateTime().toString(Qt::ISODate), u"2026-11-21T10:00:01Z"_s);
}

void TestSimulatedClock::bellRingsForItsDuration_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("outputs");
    QTest::newRow("before") << u"2026-11-20T08:59:59"_s << 0;
    QTest::newRow("first second of the first block, on output 2") << u"2026-11-20T09:00:00"_s << 4;
    QTest::newRow("last second") << u"2026-11-20T09:00:07"_s << 4;
    QTest::newRow("over") << u"2026-11-20T09:00:08"_s << 0;
    QTest::newRow("third block, on output 0") << u"2026-11-19T20:30:00"_s << 1;
    QTest::newRow("two blocks at once") << u"2026-11-20T10:50:00"_s << 6;
    QTest::newRow("a Saturday") << u"2026-11-21T09:00:00"_s << 0;
    QTest::newRow("a holiday") << u"2026-10-12T09:00:00"_s << 0;
    QTest::newRow("a vacation over the new year") << u"2027-01-04T09:00:00"_s << 0;
    QTest::newRow("the day after it") << u"2027-01-08T09:00:00"_s << 4;
}

void TestSimulatedClock::bellRingsForItsDuration()
{
    QFETCH(QString, text);
    SimulatedClock clock(Model::Hct7200);
    clock.programme() = schoolProgramme(Model::Hct7200);
    clock.setFrozen(true);
    clock.setDateTime(QDateTime::fromString(text, Qt::ISODate));
    QTEST(int(clock.outputs()), "outputs");
}

void TestSimulatedClock::intermittentBellSoundsEverySecondSecond()
{
    SimulatedClock clock(Model::Hct7200);
    clock.programme() = schoolProgramme(Model::Hct7200);
    clock.setFrozen(true);
    QList<int> heard;
    for (int second = 0; second < 6; ++second) {
        clock.setDateTime(moment("2026-11-20T11:15:00").addSecs(second));
        heard += clock.outputs();
    }
    QCOMPARE(heard, (QList<int>{2, 0, 2, 0, 2, 0}));
}

void TestSimulatedClock::bellRingsPastMidnightByTheDayItStarted()
{
    ClockProgramme programme;
    programme.blocks[0].duration = 120;
    programme.blocks[0].setAlarm(0, 23, 59, 0x01);
    QVERIFY(programme.rings(0, moment("2026-11-21T00:00:59"), Model::Hct7200));
    QVERIFY(!programme.rings(0, moment("2026-11-21T00:01:00"), Model::Hct7200));
    QVERIFY(!programme.rings(0, moment("2026-11-20T00:00:59"), Model::Hct7200));
}

void TestSimulatedClock::hct7300RingsOnItsSpecialDays_data()
{
    QTest::addColumn<int>("dayBits");
    QTest::addColumn<QString>("day");
    QTest::addColumn<bool>("rings");
    QTest::newRow("Saturday") << 0x10 << u"2026-11-21"_s << true;
    QTest::newRow("Sunday") << 0x08 << u"2026-11-22"_s << true;
    QTest::newRow("a holiday") << 0x04 << u"2026-12-08"_s << true;
    QTest::newRow("a vacation day") << 0x02 << u"2026-12-24"_s << true;
    QTest::newRow("a working day") << 0x01 << u"2026-11-20"_s << true;
    QTest::newRow("Sunday's bell on a Saturday") << 0x08 << u"2026-11-21"_s << false;
    QTest::newRow("a working day's bell on a holiday") << 0x01 << u"2026-12-08"_s << false;
    QTest::newRow("Saturday's bell on vacation") << 0x10 << u"2026-12-26"_s << false;
}

void TestSimulatedClock::hct7300RingsOnItsSpecialDays()
{
    QFETCH(int, dayBits);
    QFETCH(QString, day);
    ClockProgramme programme = schoolProgramme(Model::Hct7300);
    programme.blocks[0] = AlarmBlock();
    programme.blocks[0].duration = 5;
    programme.blocks[0].mode = 2;
    programme.blocks[0].setAlarm(0, 12, 0, quint8(dayBits));
    const QDateTime noon(QDate::fromString(day, Qt::ISODate), QTime(12, 0), Qt::UTC);
    QTEST(programme.rings(0, noon, Model::Hct7300), "rings");
}

void TestSimulatedClock::manualOperationHoldsTheOutputs()
{
    SimulatedClock clock(Model::Hct7200);
    clock.setManual(true);
    QCOMPARE(int(clock.outputs()), 0);
    clock.commandOutputs(0x05);
    QCOMPARE(int(clock.outputs()), 2);
    clock.commandOutputs(0x00);
    QCOMPARE(int(clock.outputs()), 7);
    clock.setManual(false);
    QCOMPARE(int(clock.outputs()), 0);
}

void TestSimulatedClock::commandInAutomaticModeWaitsForManualOperation()
{
    SimulatedClock clock(Model::Hct7200);
    clock.commandOutputs(0x06);
    QCOMPARE(int(clock.outputs()), 0);
    clock.setManual(true);
    QCOMPARE(int(clock.outputs()), 1);
}

void TestSimulatedClock::flagBitTwoTellsManualOperation()
{
    SimulatedClock clock(Model::Hct7200);
    clock.setFlags(0x85);
    QCOMPARE(int(clock.flags()), 0x81);
    clock.setManual(true);
    QCOMPARE(int(clock.flags()), 0x85);
}

void TestSimulatedClock::heldByteStandsInTheStatusBlock()
{
    SimulatedClock clock(Model::Hct7200);
    clock.holdByte(10, 0);
    clock.holdByte(9, 45);
    QCOMPARE(clock.statusBlock().mid(9, 2).toHex(), QByteArray("2d00"));
    clock.releaseBytes();
    QVERIFY(clock.statusBlock().at(9) != 45);
}

void TestSimulatedClock::blockOfAnotherFamilyHasFiveBytes()
{
    SimulatedClock clock(Model::Hct7200);
    clock.setDeviceType(5);
    QCOMPARE(clock.statusBlock().toHex(), QByteArray("0000000500"));
}

void TestSimulatedClock::demonstrationMovesOutputsAndInputs()
{
    SimulatedClock clock(Model::Hct7200);
    clock.setFrozen(true);
    clock.setDemonstration(true);
    clock.setDateTime(moment("2026-11-22T00:00:03"));
    QCOMPARE(int(clock.outputs()), 1);
    QCOMPARE(int(clock.inputs()), 0x98);
    clock.setDateTime(moment("2026-11-22T00:00:05"));
    QCOMPARE(int(clock.inputs()), 0x90);
}

QTEST_GUILESS_MAIN(TestSimulatedClock)
#include "TestSimulatedClock.moc"
