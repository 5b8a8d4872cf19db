#include "ClockAnswers.h"

#include <QTest>

using namespace simulator;
using namespace Qt::StringLiterals;

namespace {

QByteArray bytes(const char* hex) { return QByteArray::fromHex(hex); }

/// An alarm-block body: one alarm at 8:30 from Monday to Friday, then the model's further bytes.
QByteArray blockBody(const char* number, const char* tail)
{
    return bytes("da") + bytes(number) + bytes("e8de") + QByteArray(62, '\0') + bytes("0000") +
           bytes(tail);
}

} // namespace

class TestClockAnswers : public QObject {
    Q_OBJECT

private slots:
    void requestIsAnswered_data();
    void requestIsAnswered();
    void requestWithoutAnAnswerIsLeftInSilence_data();
    void requestWithoutAnAnswerIsLeftInSilence();
    void identificationOpensAndItsComplementCloses();
    void clockIsSet();
    void outputsAreSwitchedAndRead();
    void alarmBlockIsStored_data();
    void alarmBlockIsStored();
    void malformedAlarmBlockIsRefused_data();
    void malformedAlarmBlockIsRefused();
    void daysAreStoredAndGivenBack();
    void malformedDaysAreRefused_data();
    void malformedDaysAreRefused();
    void firmwareLineIsTakenAndResetToldOnce();
    void refusalChangesNothing();
};

void TestClockAnswers::requestIsAnswered_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("identification") << 1 << bytes("0201") << bytes("0200");
    QTest::newRow("its complement") << 1 << bytes("02fe") << bytes("0201");
    QTest::newRow("another number") << 1 << bytes("0207") << bytes("0202");
    QTest::newRow("identification cut") << 1 << bytes("02") << bytes("0202");
    QTest::newRow("clock set") << 105 << bytes("01323b08140b1a") << bytes("0100");
    QTest::newRow("31 April") << 105 << bytes("010000001f041a") << bytes("0102");
    QTest::newRow("hour 24") << 105 << bytes("0100001814041a") << bytes("0102");
    QTest::newRow("clock cut") << 105 << bytes("01323b08140b") << bytes("0101");
    QTest::newRow("29/02/2000 as year 0") << 105 << bytes("010000001d0200") << bytes("0100");
    QTest::newRow("manual, all at rest") << 137 << bytes("ca01") << bytes("ca07");
    QTest::newRow("outputs") << 105 << bytes("cb05") << bytes("cb00");
    QTest::newRow("a fourth output") << 105 << bytes("cb08") << bytes("cb02");
    QTest::newRow("outputs cut") << 105 << bytes("cb") << bytes("cb01");
    QTest::newRow("unknown area written") << 105 << bytes("7700") << bytes("7703");
    QTest::newRow("unknown area read") << 137 << bytes("77") << bytes("7703");
}

void TestClockAnswers::requestIsAnswered()
{
    QFETCH(int, code);
    QFETCH(QByteArray, request);
    SimulatedClock clock(Model::Hct7200);
    FirmwareImage firmware;
    ClockAnswers answers(clock, firmware, 1);
    QTEST(answers.answer(quint8(code), request).value_or(QByteArray()), "answer");
}

void TestClockAnswers::requestWithoutAnAnswerIsLeftInSilence_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("no body") << 137 << QByteArray();
    QTest::newRow("unknown code") << 2 << bytes("00");
    QTest::newRow("an answer's code") << 8 << bytes("0200");
    QTest::newRow("no mode") << 137 << bytes("ca");
    QTest::newRow("mode 2") << 137 << bytes("ca02");
}

void TestClockAnswers::requestWithoutAnAnswerIsLeftInSilence()
{
    QFETCH(int, code);
    QFETCH(QByteArray, request);
    SimulatedClock clock(Model::Hct7200);
    FirmwareImage firmware;
    ClockAnswers answers(clock, firmware, 1);
    QVERIFY(!answers.answer(quint8(code), request));
}

void TestClockAnswers::identificationOpensAndItsComplementCloses()
{
    SimulatedClock clock(Model::Hct7200);
    FirmwareImage firmware;
    ClockAnswers answers(clock, firmware, 0x35);
    QVERIFY(!answers.isSessionOpen());
    QCOMPARE(answers.answer(1, bytes("0235")), bytes("0200"));
    QVERIFY(answers.isSessionOpen());
    QCOMPARE(answers.answer(1, bytes("02ca")), bytes("0201"));
    QVERIFY(!answers.isSessionOpen());
}

void TestClockAnswers::clockIsSet()
{
    SimulatedClock clock(Model::Hct7200);
    clock.setFrozen(true);
    FirmwareImage firmware;
    ClockAnswers answers(clock, firmware, 1);
    QCOMPARE(answers.answer(105, bytes("01323b08140b5a")), bytes("0100"));
    QCOMPARE(clock.dateTime().toString(Qt::ISODate), u"1990-11-20T08:59:50Z"_s);
    QCOMPARE(answers.answer(137, bytes("00"))->mid(5, 7).toHex(), QByteArray("323b0802140b5a"));
}

void TestClockAnswers::outputsAreSwitchedAndRead()
{
    SimulatedClock clock(Model::Hct7200);
    FirmwareImage firmware;
    ClockAnswers answers(clock, firmware, 1);
    answers.answer(137, bytes("ca01"));
    answers.answer(105, bytes("cb05"));
    QCOMPARE(answers.answer(137, bytes("ca01")), bytes("ca05"));
    const QByteArray block = *answers.answer(137, bytes("00"));
    QCOMPARE(int(block[2]), 2);
    QCOMPARE(int(block[219]), 4);
    QCOMPARE(answers.answer(137, bytes("ca00")), bytes("ca07"));
    QVERIFY(!clock.isManual());
}

void TestClockAnswers::alarmBlockIsStored_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("durationAndMode");
    QTest::newRow("HCT-7200 keeps duration and mode")
        << 30 << blockBody("02", "02") << bytes("0501");
    QTest::newRow("HCT-7300 takes them") << 31 << blockBody("02", "020902") << bytes("0902");
    QTest::newRow("more announced than carry a day")
        << 31 << blockBody("02", "210902") << bytes("0902");
}

void TestClockAnswers::alarmBlockIsStored()
{
    QFETCH(int, model);
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, durationAndMode);
    SimulatedClock clock{Model(model)};
    clock.programme() = schoolProgramme(Model::Hct7200);
    FirmwareImage firmware;
    ClockAnswers answers(clock, firmware, 1);
    QCOMPARE(answers.answer(105, request), bytes("da00"));
    const QByteArray block = *answers.answer(137, bytes("00"));
    QCOMPARE(block.mid(20 + 66, 66), bytes("e8de") + QByteArray(64, '\0'));
    QCOMPARE(block.mid(16, 2), durationAndMode);
    QCOMPARE(block.mid(20, 2).toHex(), QByteArray("e9c0"));
}

void TestClockAnswers::malformedAlarmBlockIsRefused_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("HCT-7300's to the first") << 30 << blockBody("01", "020902") << bytes("da01");
    QTest::newRow("HCT-7200's to the second") << 31 << blockBody("01", "02") << bytes("da01");
    QTest::newRow("block 0") << 30 << blockBody("00", "02") << bytes("da02");
    QTest::newRow("block 4") << 30 << blockBody("04", "02") << bytes("da02");
    QTest::newRow("count 0") << 30 << blockBody("01", "00") << bytes("da02");
    QTest::newRow("count below the alarms") << 30 << blockBody("01", "01") << bytes("da02");
    QTest::newRow("count 34") << 30 << blockBody("01", "22") << bytes("da02");
    QTest::newRow("hour 24") << 30 << blockBody("01", "02").replace(2, 1, bytes("f8"))
                             << bytes("da02");
    QTest::newRow("minute 60") << 30 << blockBody("01", "02").replace(3, 1, bytes("fc"))
                               << bytes("da02");
    QTest::newRow("byte 66 set") << 30 << blockBody("01", "02").replace(66, 1, bytes("01"))
                                 << bytes("da02");
}

void TestClockAnswers::malformedAlarmBlockIsRefused()
{
    QFETCH(int, model);
    QFETCH(QByteArray, request);
    SimulatedClock clock{Model(model)};
    FirmwareImage firmware;
    ClockAnswers answers(clock, firmware, 1);
    QTEST(answers.answer(105, request).value_or(QByteArray()), "answer");
    QCOMPARE(clock.programme().blocks[0].bytes, QByteArray(66, '\0'));
}

void TestClockAnswers::daysAreStoredAndGivenBack()
{
    SimulatedClock clock(Model::Hct7200);
    FirmwareImage firmware;
    ClockAnswers answers(clock, firmware, 1);
    const QByteArray table = bytes("1907") + QByteArray(60, '\0') + bytes("1f0c");
    QCOMPARE(answers.answer(105, bytes("d200") + table), bytes("d200"));
    QCOMPARE(answers.answer(137, bytes("d9")), bytes("d900") + table);
}

void TestClockAnswers::malformedDaysAreRefused_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("answer");
    const QByteArray zeros(62, '\0');
    QTest::newRow("short") << bytes("d200") + zeros << bytes("d201");
    QTest::newRow("long") << bytes("d2000101000000") + zeros << bytes("d201");
    QTest::newRow("day 32") << bytes("d2002001") + zeros << bytes("d202");
    QTest::newRow("month 13") << bytes("d200010d") + zeros << bytes("d202");
    QTest::newRow("byte 1 set") << bytes("d2010101") + zeros << bytes("d202");
}

void TestClockAnswers::malformedDaysAreRefused()
{
    QFETCH(QByteArray, request);
    SimulatedClock clock(Model::Hct7200);
    FirmwareImage firmware;
    ClockAnswers answers(clock, firmware, 1);
    QTEST(answers.answer(105, request).value_or(QByteArray()), "answer");
    QCOMPARE(clock.programme().days, QByteArray(64, '\0'));
}

void TestClockAnswers::firmwareLineIsTakenAndResetToldOnce()
{
    SimulatedClock clock(Model::Hct7200);
    FirmwareImage firmware;
    ClockAnswers answers(clock, firmware, 1);
    QCOMPARE(answers.answer(105, bytes("dd04100001000001020304 1b00")), bytes("dd00"));
    QVERIFY(!answers.takeResetRequest());
    QCOMPARE(answers.answer(105, bytes("dd0414000100ff01020304 1f00")), bytes("dd00"));
    QVERIFY(answers.takeResetRequest());
    QVERIFY(!answers.takeResetRequest());
    QCOMPARE(answers.answer(105, bytes("dd04100001000001020304 1c00")), bytes("dd02"));
    QCOMPARE(answers.answer(105, bytes("dd041000010000010203 1b00")), bytes("dd01"));
}

void TestClockAnswers::refusalChangesNothing()
{
    SimulatedClock clock(Model::Hct7200);
    FirmwareImage firmware;
    const ClockAnswers answers(clock, firmware, 1);
    QCOMPARE(answers.refusal(105, bytes("cb00"), 9), bytes("cb09"));
    const QByteArray general = answers.refusal(137, bytes("00"), 9);
    QCOMPARE(general.size(), 220);
    QCOMPARE(general.left(2) + general.mid(3, 2), bytes("00000b09"));
}

QTEST_GUILESS_MAIN(TestClockAnswers)
#include "TestClockAnswers.moc"
