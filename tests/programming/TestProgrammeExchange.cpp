#include "ExchangeDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;
using State = ProgrammeExchange::State;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

namespace {

const QByteArray blockAccepted = "\xda\0"_ba;
const QByteArray holidaysAccepted = "\xd2\0"_ba;

} // namespace

/// Which requests are sent, and which answers are accepted.
class TestProgrammeExchange : public QObject {
    Q_OBJECT
private slots:
    void openingReadsTheHolidays();
    void answerOfTheHolidaysFillsTheTable();
    void holidaysOfAWrongSelectorAreRefused_data();
    void holidaysOfAWrongSelectorAreRefused();
    void wholeProgrammeIsSentStepByStep();
    void hct7200SendsBlocksOf69Bytes();
    void hct7300SendsBlocksOf71Bytes();
    void holidaysAreSentInPlainBinary();
    void unusedHolidaysAreSentAsZeros();
    void generalDataReplacesTheStatusBlock();
    void generalDataIsRefused_data();
    void generalDataIsRefused();
    void refusedBlockIsSentAgain_data();
    void refusedBlockIsSentAgain();
    void newSendingBeginsWithTheFirstBlock();
    void anyAnswerToTheHolidaysWillDo();
    void damagedAnswerToTheHolidaysIsRefused();
};

void TestProgrammeExchange::openingReadsTheHolidays()
{
    ExchangeDesk desk;
    QCOMPARE(desk.nextRequestBody(), QByteArray());
    desk.exchange.readHolidays();
    QVERIFY(desk.exchange.state() == State::Opening);
    desk.tick();
    const auto request = desk.takeRequest();
    QCOMPARE(request.code, quint8{137});
    QCOMPARE(request.body, QByteArray::fromHex("d9"));
}

void TestProgrammeExchange::answerOfTheHolidaysFillsTheTable()
{
    ExchangeDesk desk;
    desk.exchange.readHolidays();
    desk.nextRequestBody();
    QByteArray answer = samples::holidaysAnswer();
    answer.replace(2, 4, QByteArray::fromHex("190c0105"));
    answer.replace(32, 2, QByteArray::fromHex("1f0a"));
    answer.replace(34, 4, QByteArray::fromHex("170c0701"));
    answer.replace(62, 4, QByteArray::fromHex("01071f08"));
    desk.answer(answer);

    QCOMPARE(desk.holidaysRead.count(), 1);
    const auto table = desk.holidaysRead[0][0].value<HolidayTable>();
    QVERIFY((table.holidays[0] == Holiday{25, 12}));
    QVERIFY((table.holidays[1] == Holiday{1, 5}));
    QVERIFY((table.holidays[2] == Holiday{}));
    QVERIFY((table.holidays[15] == Holiday{31, 10}));
    QVERIFY((table.vacations[0] == VacationPeriod{23, 12, 7, 1}));
    QVERIFY((table.vacations[7] == VacationPeriod{1, 7, 31, 8}));
    QVERIFY(desk.exchange.state() == State::Idle);
    QCOMPARE(desk.nextRequestBody(), QByteArray());
}

void TestProgrammeExchange::holidaysOfAWrongSelectorAreRefused_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("code");
    const QByteArray good = samples::holidaysAnswer();
    QTest::newRow("selector 0xD2") << QByteArray(good).replace(0, 1, "\xD2") << 8;
    QTest::newRow("byte 1 not 0") << QByteArray(good).replace(1, 1, "\x01") << 8;
    QTest::newRow("65 bytes") << good.left(65) << 8;
    QTest::newRow("empty") << QByteArray() << 8;
    QTest::newRow("code 9") << good << 9;
}

void TestProgrammeExchange::holidaysOfAWrongSelectorAreRefused()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, code);
    ExchangeDesk desk;
    desk.exchange.readHolidays();
    desk.tick();
    desk.takeRequest();
    desk.answer(answer, static_cast<quint8>(code));
    QCOMPARE(desk.holidaysRead.count(), 0);
    QVERIFY(desk.exchange.state() == State::Opening);
    QCOMPARE(desk.nextRequestBody(), QByteArray::fromHex("d9"));
}

void TestProgrammeExchange::wholeProgrammeIsSentStepByStep()
{
    ExchangeDesk desk;
    desk.exchange.send();
    QVERIFY(desk.exchange.state() == State::SendRequested);
    desk.tick();
    auto request = desk.takeRequest();
    QCOMPARE(request.code, quint8{137});
    QCOMPARE(request.body, QByteArray(1, '\0'));
    desk.answer(samples::generalData(hct7200));

    for (int block = 1; block <= 3; ++block) {
        QVERIFY(desk.exchange.state() == State::WritingBlocks);
        desk.tick();
        request = desk.takeRequest();
        QCOMPARE(request.code, quint8{105});
        QCOMPARE(request.body.left(2), QByteArray("\xDA").append(static_cast<char>(block)));
        desk.answer(blockAccepted);
    }
    QVERIFY(desk.exchange.state() == State::WritingHolidays);
    desk.tick();
    request = desk.takeRequest();
    QCOMPARE(request.code, quint8{105});
    QCOMPARE(request.body.left(2), QByteArray::fromHex("d200"));
    QCOMPARE(desk.sent.count(), 0);
    desk.answer(holidaysAccepted);
    QCOMPARE(desk.sent.count(), 1);
    QCOMPARE(desk.failed.count(), 0);
    QVERIFY(desk.exchange.state() == State::Idle);
}

void TestProgrammeExchange::hct7200SendsBlocksOf69Bytes()
{
    ExchangeDesk desk;
    AlarmBlock& block = desk.programme.blocks[1];
    block.Duration = 7;
    block.Mode = 1;
    block.Alarms[0] = samples::onWorkingDays(8, 45);
    block.Alarms[1] = samples::alarm(14, 5, {DayFlag::Friday});
    block.ActiveCountPlusOne = 3;
    desk.exchange.send();
    desk.nextRequestBody();
    desk.answer(samples::generalData(hct7200));
    desk.nextRequestBody();
    desk.answer(blockAccepted);
    QCOMPARE(desk.nextRequestBody(), QByteArray::fromHex("da02"
                                                         "e8ed"
                                                         "0e45") +
                                         QByteArray(62, '\0') + QByteArray::fromHex("03"));
}

void TestProgrammeExchange::hct7300SendsBlocksOf71Bytes()
{
    ExchangeDesk desk(hct7300);
    AlarmBlock& block = desk.programme.blocks[0];
    block.Duration = 7;
    block.Mode = 2;
    block.Alarms[0] = samples::alarm(8, 45, {DayFlag::Saturday, DayFlag::OnVacation});
    block.Alarms[31] = samples::onWorkingDays(23, 59);
    block.ActiveCountPlusOne = 3;
    desk.exchange.send();
    desk.tick();
    desk.takeRequest();
    desk.answer(samples::generalData(hct7300));
    QCOMPARE(desk.nextRequestBody(), QByteArray::fromHex("da01"
                                                         "88ad") +
                                         QByteArray(60, '\0') +
                                         QByteArray::fromHex("177b"
                                                             "0000"
                                                             "03"
                                                             "0702"));
}

void TestProgrammeExchange::holidaysAreSentInPlainBinary()
{
    ExchangeDesk desk;
    desk.programme.table.holidays[0] = {25, 12};
    desk.programme.table.holidays[15] = {31, 10};
    desk.programme.table.vacations[0] = {23, 12, 7, 1};
    desk.programme.table.vacations[7] = {1, 7, 31, 8};
    desk.reach(State::WritingHolidays);
    desk.exchange.ProcesoDiferido();
    QCOMPARE(desk.takeRequestBody(), QByteArray::fromHex("d200190c") + QByteArray(28, '\0') +
                                         QByteArray::fromHex("1f0a170c0701") +
                                         QByteArray(24, '\0') + QByteArray::fromHex("01071f08"));
}

void TestProgrammeExchange::unusedHolidaysAreSentAsZeros()
{
    ExchangeDesk desk;
    desk.reach(State::WritingHolidays);
    desk.exchange.ProcesoDiferido();
    QCOMPARE(desk.takeRequestBody(), QByteArray::fromHex("d2") + QByteArray(65, '\0'));
}

void TestProgrammeExchange::generalDataReplacesTheStatusBlock()
{
    ExchangeDesk desk;
    desk.globais.GeneralData = QByteArray(5, 'x');
    desk.exchange.send();
    desk.tick();
    const QByteArray answer = samples::generalData(hct7200) + QByteArray("more");
    desk.answer(answer);
    QCOMPARE(desk.globais.GeneralData, answer);
}

void TestProgrammeExchange::generalDataIsRefused_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("code");
    const QByteArray good = samples::generalData(hct7200);
    QTest::newRow("219 bytes") << good.left(219) << 8;
    QTest::newRow("empty") << QByteArray() << 8;
    QTest::newRow("byte 0") << QByteArray(good).replace(0, 1, "\x01") << 8;
    QTest::newRow("byte 1") << QByteArray(good).replace(1, 1, "\x01") << 8;
    QTest::newRow("byte 3 is 12") << QByteArray(good).replace(3, 1, "\x0C") << 8;
    QTest::newRow("byte 4") << QByteArray(good).replace(4, 1, "\x01") << 8;
    QTest::newRow("code 9") << good << 9;
}

void TestProgrammeExchange::generalDataIsRefused()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, code);
    ExchangeDesk desk;
    desk.globais.GeneralData = QByteArray(5, 'x');
    desk.exchange.send();
    desk.tick();
    desk.takeRequest();
    desk.answer(answer, static_cast<quint8>(code));
    QVERIFY(desk.exchange.state() == State::SendRequested);
    QCOMPARE(desk.globais.GeneralData, QByteArray(5, 'x'));
    QCOMPARE(desk.nextRequestBody(), QByteArray(1, '\0'));
}

void TestProgrammeExchange::refusedBlockIsSentAgain_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("code");
    QTest::newRow("byte 1 not 0") << QByteArray::fromHex("da01") << 8;
    QTest::newRow("another selector") << QByteArray::fromHex("d200") << 8;
    QTest::newRow("1 byte") << QByteArray::fromHex("da") << 8;
    QTest::newRow("empty") << QByteArray() << 8;
    QTest::newRow("code 9") << blockAccepted << 9;
}

void TestProgrammeExchange::refusedBlockIsSentAgain()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, code);
    ExchangeDesk desk;
    desk.exchange.send();
    desk.nextRequestBody();
    desk.answer(samples::generalData(hct7200));
    desk.nextRequestBody();
    desk.answer(blockAccepted);
    QCOMPARE(desk.nextRequestBody().left(2), QByteArray::fromHex("da02"));
    desk.answer(answer, static_cast<quint8>(code));
    QCOMPARE(desk.nextRequestBody().left(2), QByteArray::fromHex("da02"));
    desk.answer(blockAccepted + QByteArray(10, '\xff'));
    QCOMPARE(desk.nextRequestBody().left(2), QByteArray::fromHex("da03"));
}

void TestProgrammeExchange::newSendingBeginsWithTheFirstBlock()
{
    ExchangeDesk desk;
    for (int sending = 0; sending < 2; ++sending) {
        desk.exchange.send();
        desk.nextRequestBody();
        desk.answer(samples::generalData(hct7200));
        QCOMPARE(desk.nextRequestBody().left(2), QByteArray::fromHex("da01"));
        desk.answer(blockAccepted);
    }
}

void TestProgrammeExchange::anyAnswerToTheHolidaysWillDo()
{
    ExchangeDesk desk;
    desk.reach(State::WritingHolidays);
    desk.nextRequestBody();
    desk.answer(QByteArray(), 77);
    QCOMPARE(desk.sent.count(), 1);
}

void TestProgrammeExchange::damagedAnswerToTheHolidaysIsRefused()
{
    ExchangeDesk desk;
    desk.reach(State::WritingHolidays);
    const QByteArray body = desk.nextRequestBody();
    desk.answerDamaged(holidaysAccepted);
    QCOMPARE(desk.sent.count(), 0);
    QCOMPARE(desk.nextRequestBody(), body);
}

QTEST_GUILESS_MAIN(TestProgrammeExchange)
#include "TestProgrammeExchange.moc"
