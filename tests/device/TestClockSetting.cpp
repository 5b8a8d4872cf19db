#include "ClockSetting.h"
#include "CronoRegistration.h"
#include "LinkFixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using State = ClockSetting::State;

namespace {

/// A clock setting registered as its window registers it.
struct Setting : LinkFixture {
    ClockSetting setting{link, log, clock};
    CronoRegistration registration{crono, setting, 1};
    QSignalSpy gaveUp{&setting, &ClockSetting::gaveUp};

    void begin(State source)
    {
        connect();
        setting.begin(source);
        registration.ActivaCliente();
    }
};

const ClockFields exampleFields{5, 3, 2019, 23, 59, 58};

} // namespace

class TestClockSetting : public QObject {
    Q_OBJECT
private slots:
    void datesAreJudgedByTheClocksRule_data();
    void datesAreJudgedByTheClocksRule();
    void months31EndOnTheRightOnes();
    void messageHoldsSevenPlainBytes_data();
    void messageHoldsSevenPlainBytes();
    void fieldsAreTakenFromTheStatusBlock();
    void fieldsOfAnAbsentBlockAreZero();
    void fieldsThatDifferInOneValueAreNotEqual();
    void idleSendsNothing();
    void manualSettingSendsTheFields();
    void automaticSettingSendsTheComputersTimeAtTheMomentOfSending();
    void goodAnswerEndsItWithALine();
    void failedAnswerIsAskedForAgain_data();
    void failedAnswerIsAskedForAgain();
    void thirdFailureIsTold_data();
    void thirdFailureIsTold();
    void successAfterTwoFailuresTellsNothing();
    void anotherStartCountsAnew();
    void changedFieldsGoIntoTheRepetition();
    void closedPortFailsThreeTimesWithoutARequest();
    void nothingReachesAStoppedSetting();
    void destructionUnderABoxIsHarmless();
    void pollingGoesOnAfterwards();
    void reasonOfTheThirdFailureIsTold();
};

void TestClockSetting::datesAreJudgedByTheClocksRule_data()
{
    QTest::addColumn<int>("day");
    QTest::addColumn<int>("month");
    QTest::addColumn<int>("year");
    QTest::addColumn<bool>("valid");
    QTest::newRow("29/02/2000") << 29 << 2 << 2000 << true;
    QTest::newRow("29/02/2100") << 29 << 2 << 2100 << false;
    QTest::newRow("29/02/2400, no multiple of 500") << 29 << 2 << 2400 << false;
    QTest::newRow("29/02/2500") << 29 << 2 << 2500 << true;
    QTest::newRow("29/02/2019") << 29 << 2 << 2019 << false;
    QTest::newRow("29/02/2020") << 29 << 2 << 2020 << true;
    QTest::newRow("29/02/0000") << 29 << 2 << 0 << true;
    QTest::newRow("28/02/2019") << 28 << 2 << 2019 << true;
    QTest::newRow("30/02/2020") << 30 << 2 << 2020 << false;
    QTest::newRow("31/02/2020") << 31 << 2 << 2020 << false;
    QTest::newRow("29/04/2019") << 29 << 4 << 2019 << true;
    QTest::newRow("30/04/2019") << 30 << 4 << 2019 << true;
    QTest::newRow("31/04/2019") << 31 << 4 << 2019 << false;
    QTest::newRow("01/01/9999") << 1 << 1 << 9999 << true;
}

void TestClockSetting::datesAreJudgedByTheClocksRule()
{
    QFETCH(int, day);
    QFETCH(int, month);
    QFETCH(int, year);
    QTEST(ClockSetting::isValidDate(day, month, year), "valid");
}

void TestClockSetting::months31EndOnTheRightOnes()
{
    QList<int> without;
    for (int month = 1; month <= 12; ++month)
        if (!ClockSetting::isValidDate(31, month, 2019))
            without.append(month);
    QCOMPARE(without, QList<int>({2, 4, 6, 9, 11}));
}

void TestClockSetting::messageHoldsSevenPlainBytes_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("2019 as 19") << 2019 << QByteArray("013a3b17050313");
    QTest::newRow("2100 as 0") << 2100 << QByteArray("013a3b17050300");
    QTest::newRow("1999 as 99") << 1999 << QByteArray("013a3b17050363");
    QTest::newRow("9999 as 99") << 9999 << QByteArray("013a3b17050363");
    QTest::newRow("0 as 0") << 0 << QByteArray("013a3b17050300");
}

void TestClockSetting::messageHoldsSevenPlainBytes()
{
    QFETCH(int, year);
    ClockFields fields = exampleFields;
    fields.year = year;
    QTEST(ClockSetting::message(fields).toHex(), "bytes");
}

void TestClockSetting::fieldsAreTakenFromTheStatusBlock()
{
    QByteArray block(220, '\0');
    block.replace(5, 7, QByteArray::fromHex("3a3b1703050363"));
    QCOMPARE(ClockFields::fromBlock(StatusBlock(block)), (ClockFields{5, 3, 1999, 23, 59, 58}));
    block[11] = 89;
    QCOMPARE(ClockFields::fromBlock(StatusBlock(block)).year, 2089);
}

void TestClockSetting::fieldsThatDifferInOneValueAreNotEqual()
{
    for (int ClockFields::*const field :
         {&ClockFields::day, &ClockFields::month, &ClockFields::year, &ClockFields::hours,
          &ClockFields::minutes, &ClockFields::seconds}) {
        ClockFields fields = exampleFields;
        QVERIFY(fields == exampleFields);
        ++(fields.*field);
        QVERIFY(!(fields == exampleFields));
    }
}

void TestClockSetting::fieldsOfAnAbsentBlockAreZero()
{
    QCOMPARE(ClockFields::fromBlock(StatusBlock(QByteArray())), (ClockFields{0, 0, 2000, 0, 0, 0}));
}

void TestClockSetting::idleSendsNothing()
{
    Setting fixture;
    fixture.begin(State::Idle);
    fixture.tick(5);
    QVERIFY(!fixture.hasRequest());
}

void TestClockSetting::manualSettingSendsTheFields()
{
    Setting fixture;
    fixture.setting.setFields(exampleFields);
    fixture.begin(State::Manual);
    fixture.tick();
    QCOMPARE(fixture.requestCode(), quint8(105));
    QCOMPARE(fixture.takeRequestBody().toHex(), QByteArray("013a3b17050313"));
    QVERIFY(fixture.link.Ocupado());
}

void TestClockSetting::automaticSettingSendsTheComputersTimeAtTheMomentOfSending()
{
    Setting fixture;
    fixture.setting.setFields(exampleFields);
    fixture.begin(State::Automatic);
    fixture.clock.time = QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59));
    fixture.tick();
    QCOMPARE(fixture.takeRequestBody().toHex(), QByteArray("013b3b171f0c1a"));
    fixture.refuse(0x01);
    fixture.clock.time = QDateTime(QDate(2027, 1, 1), QTime(0, 0, 2));
    fixture.tick();
    QCOMPARE(fixture.takeRequestBody().toHex(), QByteArray("0102000001011b"));
}

void TestClockSetting::goodAnswerEndsItWithALine()
{
    Setting fixture;
    QSignalSpy accepted(&fixture.setting, &ClockSetting::accepted);
    fixture.begin(State::Manual);
    fixture.tick();
    fixture.takeRequest();
    fixture.answerHex("0100");
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(fixture.setting.SyncState(), State::Idle);
    QCOMPARE(fixture.log.lines, QStringList{u"Reloj del equipo actualizado en fecha y hora"_s});
    QCOMPARE(fixture.gaveUp.count(), 0);
    fixture.tick(3);
    QVERIFY(!fixture.hasRequest());
}

void TestClockSetting::failedAnswerIsAskedForAgain_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("code");
    QTest::newRow("refusal") << QByteArray("0101") << 8;
    QTest::newRow("refusal with the highest bit") << QByteArray("0180") << 8;
    QTest::newRow("wrong echo") << QByteArray("0200") << 8;
    QTest::newRow("one byte") << QByteArray("01") << 8;
    QTest::newRow("no byte") << QByteArray() << 8;
    QTest::newRow("another code") << QByteArray("0100") << 9;
    QTest::newRow("none") << QByteArray("-") << 0;
    QTest::newRow("wrong checksum") << QByteArray("0100") << -8;
}

/// Answers as a row says: "-" is no answer, a negative code a wrong checksum.
static void reply(LinkFixture& fixture, const QByteArray& answer, int code)
{
    if (answer == "-")
        fixture.timeOut();
    else if (code < 0)
        fixture.answerDamaged(QByteArray::fromHex(answer), quint8(-code));
    else
        fixture.answer(QByteArray::fromHex(answer), quint8(code));
}

void TestClockSetting::failedAnswerIsAskedForAgain()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, code);
    Setting fixture;
    QSignalSpy accepted(&fixture.setting, &ClockSetting::accepted);
    fixture.setting.setFields(exampleFields);
    fixture.begin(State::Manual);
    for (int attempt = 1; attempt <= 2; ++attempt) {
        fixture.tick();
        QCOMPARE(fixture.takeRequestBody().toHex(), QByteArray("013a3b17050313"));
        reply(fixture, answer, code);
        QCOMPARE(fixture.setting.FailedAttempts(), attempt);
        QCOMPARE(fixture.setting.SyncState(), State::Manual);
    }
    QCOMPARE(accepted.count(), 0);
    QCOMPARE(fixture.gaveUp.count(), 0);
    QVERIFY(fixture.log.lines.isEmpty());
}

void TestClockSetting::reasonOfTheThirdFailureIsTold()
{
    Setting fixture;
    fixture.begin(State::Manual);
    for (int attempt = 1; attempt <= 2; ++attempt) {
        fixture.tick();
        fixture.takeRequest();
        fixture.refuse(0x01);
    }
    fixture.tick();
    fixture.timeOut();
    QCOMPARE(fixture.gaveUp.count(), 1);
    QVERIFY(fixture.gaveUp.first().first().value<LinkStatus>() == LinkStatus::TimeOut);
}

void TestClockSetting::thirdFailureIsTold_data() { failedAnswerIsAskedForAgain_data(); }

void TestClockSetting::thirdFailureIsTold()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, code);
    Setting fixture;
    QStringList linesWhenTold{u"not told"_s};
    QObject::connect(&fixture.setting, &ClockSetting::gaveUp,
                     [&] { linesWhenTold = fixture.log.lines; });
    fixture.begin(State::Manual);
    for (int attempt = 1; attempt <= 3; ++attempt) {
        fixture.tick();
        fixture.takeRequest();
        reply(fixture, answer, code);
    }
    QCOMPARE(fixture.setting.SyncState(), State::Idle);
    QCOMPARE(fixture.gaveUp.count(), 1);
    QCOMPARE(linesWhenTold, QStringList());
    QCOMPARE(fixture.log.lines, QStringList{u"Error intentando puesta en hora del equipo"_s});
    fixture.tick(3);
    QVERIFY(!fixture.hasRequest());
}

void TestClockSetting::successAfterTwoFailuresTellsNothing()
{
    Setting fixture;
    fixture.begin(State::Manual);
    for (const char* answer : {"0101", "0101", "0100"}) {
        fixture.tick();
        fixture.takeRequest();
        fixture.answerHex(answer);
    }
    QCOMPARE(fixture.gaveUp.count(), 0);
    QCOMPARE(fixture.log.lines, QStringList{u"Reloj del equipo actualizado en fecha y hora"_s});
}

void TestClockSetting::anotherStartCountsAnew()
{
    Setting fixture;
    fixture.begin(State::Manual);
    for (int attempt = 1; attempt <= 2; ++attempt) {
        fixture.tick();
        fixture.takeRequest();
        fixture.refuse(0x01);
    }
    fixture.setting.begin(State::Automatic);
    QCOMPARE(fixture.setting.FailedAttempts(), 0);
    fixture.tick();
    fixture.takeRequest();
    fixture.refuse(0x01);
    QCOMPARE(fixture.gaveUp.count(), 0);
}

void TestClockSetting::changedFieldsGoIntoTheRepetition()
{
    Setting fixture;
    fixture.setting.setFields(exampleFields);
    fixture.begin(State::Manual);
    fixture.tick();
    fixture.takeRequest();
    fixture.refuse(0x01);
    fixture.setting.setFields({1, 2, 2004, 3, 5, 6});
    fixture.tick();
    QCOMPARE(fixture.takeRequestBody().toHex(), QByteArray("01060503010204"));
}

void TestClockSetting::closedPortFailsThreeTimesWithoutARequest()
{
    Setting fixture;
    fixture.begin(State::Manual);
    fixture.serie.vanish();
    fixture.tick(3);
    QVERIFY(!fixture.hasRequest());
    QCOMPARE(fixture.gaveUp.count(), 1);
    QVERIFY(fixture.tmrCrono.isEnabled());
}

void TestClockSetting::nothingReachesAStoppedSetting()
{
    Setting fixture;
    QSignalSpy accepted(&fixture.setting, &ClockSetting::accepted);
    fixture.begin(State::Manual);
    fixture.tick();
    fixture.takeRequest();
    fixture.setting.stop();
    fixture.answerHex("0100");
    QCOMPARE(accepted.count(), 0);
    QVERIFY(fixture.log.lines.isEmpty());
    QVERIFY(!fixture.link.Ocupado());
}

void TestClockSetting::destructionUnderABoxIsHarmless()
{
    LinkFixture fixture;
    auto setting = std::make_unique<ClockSetting>(fixture.link, fixture.log, fixture.clock);
    auto registration = std::make_unique<CronoRegistration>(fixture.crono, *setting, qint16(1));
    fixture.connect();
    setting->begin(State::Manual);
    registration->ActivaCliente();
    QObject::connect(setting.get(), &ClockSetting::gaveUp, [&] {
        fixture.link.RemataConexion();
        registration.reset();
        setting.reset();
    });
    for (int attempt = 1; attempt <= 3; ++attempt) {
        fixture.tick();
        fixture.takeRequest();
        fixture.refuse(0x01);
    }
    QVERIFY(!setting);
    QCOMPARE(fixture.log.lines, QStringList{u"Error intentando puesta en hora del equipo"_s});
}

void TestClockSetting::pollingGoesOnAfterwards()
{
    struct Poller final : DeferredProcess {
        int calls = 0;
        void ProcesoDiferido() override { ++calls; }
    } poller;
    Setting fixture;
    CronoRegistration polling(fixture.crono, poller, 1);
    polling.ActivaCliente();
    fixture.begin(State::Manual);
    for (int attempt = 1; attempt <= 3; ++attempt) {
        while (!fixture.hasRequest())
            fixture.tick();
        fixture.takeRequest();
        fixture.refuse(0x01);
    }
    QCOMPARE(fixture.gaveUp.count(), 1);
    poller.calls = 0;
    fixture.tick(5);
    QCOMPARE(poller.calls, 5);
}

QTEST_GUILESS_MAIN(TestClockSetting)
#include "TestClockSetting.moc"
