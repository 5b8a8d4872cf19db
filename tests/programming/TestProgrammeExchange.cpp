#include "LinkFixture.h"
#include "ProgrammeExchange.h"
#include "ProgrammeRules.h"
#include "ProgrammeSamples.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using State = ProgrammeExchange::State;

constexpr auto first = ClockModel::HCT7200;
constexpr auto second = ClockModel::HCT7300;

namespace {

const QByteArray blockAccepted = QByteArray::fromHex("da00");
const QByteArray holidaysAccepted = QByteArray::fromHex("d200");

/// Lets a test place the exchange in a state that nothing leads to.
class OpenExchange final : public ProgrammeExchange {
public:
    using ProgrammeExchange::ProgrammeExchange;
    using ProgrammeExchange::setState;
};

struct Desk {
    explicit Desk(ClockModel model = first)
        : exchange({fixture.crono, fixture.link, fixture.globais, fixture.log}, model, programme,
                   [this] { return programme.table; })
    {
        fixture.connect();
    }

    /// As the main window ends a connection.
    void disconnect()
    {
        fixture.crono.setTimerEnabled(false);
        fixture.link.RemataConexion();
    }
    /// The body of the request that the next tick sends; empty when it sends none.
    QByteArray nextRequest()
    {
        fixture.tick();
        return fixture.hasRequest() ? fixture.takeRequestBody() : QByteArray();
    }

    LinkFixture fixture;
    Programme programme;
    OpenExchange exchange;
    QSignalSpy failed{&exchange, &ProgrammeExchange::failed};
    QSignalSpy sent{&exchange, &ProgrammeExchange::sent};
    QSignalSpy holidaysRead{&exchange, &ProgrammeExchange::holidaysRead};
};

} // namespace

class TestProgrammeExchange : public QObject {
    Q_OBJECT
private slots:
    void openingReadsTheHolidays();
    void answerOfTheHolidaysFillsTheTable();
    void holidaysOfAWrongSelectorAreRefused_data();
    void holidaysOfAWrongSelectorAreRefused();
    void wholeProgrammeIsSentStepByStep();
    void firstModelSendsBlocksOf69Bytes();
    void secondModelSendsBlocksOf71Bytes();
    void holidaysAreSentInPlainBinary();
    void unusedHolidaysAreSentAsZeros();
    void generalDataReplacesTheStatusBlock();
    void generalDataIsRefused_data();
    void generalDataIsRefused();
    void generalDataOf219BytesElevenTimesGivesUpAndWritesNothing();
    void tenRefusalsAreForgiven();
    void refusedBlockIsSentAgain_data();
    void refusedBlockIsSentAgain();
    void anyAnswerToTheHolidaysWillDo();
    void damagedAnswerToTheHolidaysIsRefused();
    void refusalsOfTheOpeningCountForTheSending();
    void secondSendingAfterAFailureEndsAtItsFirstRefusal();
    void nothingIsSentAfterGivingUp();
    void failedStateTellsAtEachCallAndStays();
    void everyRefusalIsLogged();
    void closedPortIsARefusal();
    void endOfTheConnectionGivesUp_data();
    void endOfTheConnectionGivesUp();
    void endOfTheConnectionIsNotToldFromWithinIt();
    void endOfTheConnectionAfterTheLastRefusalIsToldOnce();
    void endOfTheConnectionUnderTheFailureIsNotToldAgain();
    void endOfTheConnectionWhileIdleIsNoFailure();
    void endOfTheProgramIsNoFailure();
    void withoutAConnectionASendingGivesUp();
    void withoutAConnectionAReadingGivesUp();
    void newConnectionTakesASending();
    void stoppingAfterTheEndOfTheConnectionTellsNothing();
    void stoppingLeavesNothingBoundOrRegistered();
    void exchangeDestroyedWhileTellingTheFailureIsNotTouched();
};

void TestProgrammeExchange::openingReadsTheHolidays()
{
    Desk desk;
    QCOMPARE(desk.nextRequest(), QByteArray());
    desk.exchange.readHolidays();
    QVERIFY(desk.exchange.state() == State::Opening);
    desk.fixture.tick();
    const auto request = desk.fixture.takeRequest();
    QCOMPARE(request.code, quint8{137});
    QCOMPARE(request.body, QByteArray::fromHex("d9"));
}

void TestProgrammeExchange::answerOfTheHolidaysFillsTheTable()
{
    Desk desk;
    desk.exchange.readHolidays();
    desk.nextRequest();
    QByteArray answer = samples::holidaysAnswer();
    answer.replace(2, 4, QByteArray::fromHex("190c0105"));
    answer.replace(32, 2, QByteArray::fromHex("1f0a"));
    answer.replace(34, 4, QByteArray::fromHex("170c0701"));
    answer.replace(62, 4, QByteArray::fromHex("01071f08"));
    desk.fixture.answer(answer);

    QCOMPARE(desk.holidaysRead.count(), 1);
    const auto table = desk.holidaysRead[0][0].value<HolidayTable>();
    QVERIFY((table.holidays[0] == Holiday{25, 12}));
    QVERIFY((table.holidays[1] == Holiday{1, 5}));
    QVERIFY((table.holidays[2] == Holiday{}));
    QVERIFY((table.holidays[15] == Holiday{31, 10}));
    QVERIFY((table.vacations[0] == VacationPeriod{23, 12, 7, 1}));
    QVERIFY((table.vacations[7] == VacationPeriod{1, 7, 31, 8}));
    QVERIFY(desk.exchange.state() == State::Idle);
    QCOMPARE(desk.nextRequest(), QByteArray());
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
    Desk desk;
    desk.exchange.readHolidays();
    desk.fixture.tick();
    desk.fixture.takeRequest();
    desk.fixture.answer(answer, static_cast<quint8>(code));
    QCOMPARE(desk.holidaysRead.count(), 0);
    QVERIFY(desk.exchange.state() == State::Opening);
    QCOMPARE(desk.nextRequest(), QByteArray::fromHex("d9"));
}

void TestProgrammeExchange::wholeProgrammeIsSentStepByStep()
{
    Desk desk;
    desk.exchange.send();
    QVERIFY(desk.exchange.state() == State::SendRequested);
    desk.fixture.tick();
    auto request = desk.fixture.takeRequest();
    QCOMPARE(request.code, quint8{137});
    QCOMPARE(request.body, QByteArray(1, '\0'));
    desk.fixture.answer(samples::generalData(first));

    for (int block = 1; block <= 3; ++block) {
        QVERIFY(desk.exchange.state() == State::WritingBlocks);
        desk.fixture.tick();
        request = desk.fixture.takeRequest();
        QCOMPARE(request.code, quint8{105});
        QCOMPARE(request.body.left(2), QByteArray("\xDA").append(static_cast<char>(block)));
        desk.fixture.answer(blockAccepted);
    }
    QVERIFY(desk.exchange.state() == State::WritingHolidays);
    desk.fixture.tick();
    request = desk.fixture.takeRequest();
    QCOMPARE(request.code, quint8{105});
    QCOMPARE(request.body.left(2), QByteArray::fromHex("d200"));
    QCOMPARE(desk.sent.count(), 0);
    desk.fixture.answer(holidaysAccepted);
    QCOMPARE(desk.sent.count(), 1);
    QCOMPARE(desk.failed.count(), 0);
    QVERIFY(desk.exchange.state() == State::Idle);
}

void TestProgrammeExchange::firstModelSendsBlocksOf69Bytes()
{
    Desk desk;
    AlarmBlock& block = desk.programme.blocks[1];
    block.Duration = 7;
    block.Mode = 1;
    block.Alarms[0] = samples::onWorkingDays(8, 45);
    block.Alarms[1] = samples::alarm(14, 5, {DayFlag::Friday});
    block.ActiveCountPlusOne = 3;
    desk.exchange.send();
    desk.nextRequest();
    desk.fixture.answer(samples::generalData(first));
    desk.nextRequest();
    desk.fixture.answer(blockAccepted);
    QCOMPARE(desk.nextRequest(), QByteArray::fromHex("da02"
                                                     "e8ed"
                                                     "0e45") +
                                     QByteArray(62, '\0') + QByteArray::fromHex("03"));
}

void TestProgrammeExchange::secondModelSendsBlocksOf71Bytes()
{
    Desk desk(second);
    AlarmBlock& block = desk.programme.blocks[0];
    block.Duration = 7;
    block.Mode = 2;
    block.Alarms[0] = samples::alarm(8, 45, {DayFlag::Saturday, DayFlag::OnVacation});
    block.Alarms[31] = samples::onWorkingDays(23, 59);
    block.ActiveCountPlusOne = 3;
    desk.exchange.send();
    desk.fixture.tick();
    desk.fixture.takeRequest();
    desk.fixture.answer(samples::generalData(second));
    QCOMPARE(desk.nextRequest(), QByteArray::fromHex("da01"
                                                     "88ad") +
                                     QByteArray(60, '\0') +
                                     QByteArray::fromHex("177b"
                                                         "0000"
                                                         "03"
                                                         "0702"));
}

void TestProgrammeExchange::holidaysAreSentInPlainBinary()
{
    Desk desk;
    desk.programme.table.holidays[0] = {25, 12};
    desk.programme.table.holidays[15] = {31, 10};
    desk.programme.table.vacations[0] = {23, 12, 7, 1};
    desk.programme.table.vacations[7] = {1, 7, 31, 8};
    desk.exchange.setState(State::WritingHolidays);
    desk.exchange.ProcesoDiferido();
    QCOMPARE(desk.fixture.takeRequestBody(),
             QByteArray::fromHex("d200190c") + QByteArray(28, '\0') +
                 QByteArray::fromHex("1f0a170c0701") + QByteArray(24, '\0') +
                 QByteArray::fromHex("01071f08"));
}

void TestProgrammeExchange::unusedHolidaysAreSentAsZeros()
{
    Desk desk;
    desk.exchange.setState(State::WritingHolidays);
    desk.exchange.ProcesoDiferido();
    QCOMPARE(desk.fixture.takeRequestBody(), QByteArray::fromHex("d2") + QByteArray(65, '\0'));
}

void TestProgrammeExchange::generalDataReplacesTheStatusBlock()
{
    Desk desk;
    desk.fixture.globais.GeneralData = QByteArray(5, 'x');
    desk.exchange.send();
    desk.fixture.tick();
    const QByteArray answer = samples::generalData(first) + QByteArray("more");
    desk.fixture.answer(answer);
    QCOMPARE(desk.fixture.globais.GeneralData, answer);
}

void TestProgrammeExchange::generalDataIsRefused_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("code");
    const QByteArray good = samples::generalData(first);
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
    Desk desk;
    desk.fixture.globais.GeneralData = QByteArray(5, 'x');
    desk.exchange.send();
    desk.fixture.tick();
    desk.fixture.takeRequest();
    desk.fixture.answer(answer, static_cast<quint8>(code));
    QVERIFY(desk.exchange.state() == State::SendRequested);
    QCOMPARE(desk.fixture.globais.GeneralData, QByteArray(5, 'x'));
    QCOMPARE(desk.nextRequest(), QByteArray(1, '\0'));
}

void TestProgrammeExchange::generalDataOf219BytesElevenTimesGivesUpAndWritesNothing()
{
    Desk desk;
    desk.exchange.send();
    for (int refusal = 0; refusal < 11; ++refusal) {
        QCOMPARE(desk.nextRequest(), QByteArray(1, '\0'));
        QCOMPARE(desk.failed.count(), 0);
        desk.fixture.answer(samples::generalData(first).left(219));
    }
    QVERIFY(desk.exchange.state() == State::GivingUp);
    QCOMPARE(desk.nextRequest(), QByteArray());
    QCOMPARE(desk.failed.count(), 1);
    QVERIFY(desk.exchange.state() == State::Idle);
}

void TestProgrammeExchange::tenRefusalsAreForgiven()
{
    Desk desk;
    desk.exchange.send();
    for (int refusal = 0; refusal < 10; ++refusal) {
        desk.fixture.tick();
        desk.fixture.timeOut();
    }
    desk.fixture.tick();
    desk.fixture.answer(samples::generalData(first));
    QVERIFY(desk.exchange.state() == State::WritingBlocks);
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
    Desk desk;
    desk.exchange.send();
    desk.nextRequest();
    desk.fixture.answer(samples::generalData(first));
    desk.nextRequest();
    desk.fixture.answer(blockAccepted);
    QCOMPARE(desk.nextRequest().left(2), QByteArray::fromHex("da02"));
    desk.fixture.answer(answer, static_cast<quint8>(code));
    QCOMPARE(desk.nextRequest().left(2), QByteArray::fromHex("da02"));
    desk.fixture.answer(blockAccepted + QByteArray(10, '\xff'));
    QCOMPARE(desk.nextRequest().left(2), QByteArray::fromHex("da03"));
}

void TestProgrammeExchange::anyAnswerToTheHolidaysWillDo()
{
    Desk desk;
    desk.exchange.send();
    desk.exchange.setState(State::WritingHolidays);
    desk.nextRequest();
    desk.fixture.answer(QByteArray(), 77);
    QCOMPARE(desk.sent.count(), 1);
}

void TestProgrammeExchange::damagedAnswerToTheHolidaysIsRefused()
{
    Desk desk;
    desk.exchange.send();
    desk.exchange.setState(State::WritingHolidays);
    const QByteArray body = desk.nextRequest();
    desk.fixture.answerDamaged(holidaysAccepted);
    QCOMPARE(desk.sent.count(), 0);
    QCOMPARE(desk.nextRequest(), body);
}

void TestProgrammeExchange::refusalsOfTheOpeningCountForTheSending()
{
    Desk desk;
    desk.exchange.readHolidays();
    for (int refusal = 0; refusal < 10; ++refusal) {
        desk.fixture.tick();
        desk.fixture.refuse(0xD9);
    }
    desk.fixture.tick();
    desk.fixture.answer(samples::holidaysAnswer());
    desk.exchange.send();
    desk.fixture.tick();
    desk.fixture.refuse(0x00);
    QVERIFY(desk.exchange.state() == State::GivingUp);
}

void TestProgrammeExchange::secondSendingAfterAFailureEndsAtItsFirstRefusal()
{
    Desk desk;
    desk.exchange.send();
    for (int call = 0; call < 12; ++call) {
        desk.fixture.tick();
        desk.fixture.timeOut();
    }
    QCOMPARE(desk.failed.count(), 1);
    desk.exchange.send();
    desk.fixture.tick();
    desk.fixture.answer(samples::generalData(first));
    desk.fixture.tick();
    desk.fixture.refuse(0xDA);
    desk.fixture.tick();
    QCOMPARE(desk.failed.count(), 2);
}

void TestProgrammeExchange::nothingIsSentAfterGivingUp()
{
    Desk desk;
    desk.exchange.setState(State::GivingUp);
    desk.exchange.ProcesoDiferido();
    desk.fixture.tick(50);
    QVERIFY(!desk.fixture.hasRequest());
    QCOMPARE(desk.failed.count(), 1);
}

void TestProgrammeExchange::failedStateTellsAtEachCallAndStays()
{
    Desk desk;
    desk.exchange.setState(State::Failed);
    desk.exchange.ProcesoDiferido();
    desk.exchange.ProcesoDiferido();
    QCOMPARE(desk.failed.count(), 2);
    QVERIFY(desk.exchange.state() == State::Failed);
}

void TestProgrammeExchange::everyRefusalIsLogged()
{
    Desk desk;
    desk.exchange.readHolidays();
    desk.fixture.tick();
    desk.fixture.timeOut();
    desk.exchange.setState(State::WritingBlocks);
    desk.fixture.tick();
    desk.fixture.refuse(0xDA);
    QCOMPARE(desk.fixture.log.lines,
             (QStringList{u"Fallo en lectura de festivos y vacaciones (estado 1)"_s,
                          u"Fallo en escritura del bloque de avisos 1 (estado 8)"_s}));
    QCOMPARE(desk.fixture.log.timesShown, 0);
}

void TestProgrammeExchange::closedPortIsARefusal()
{
    Desk desk;
    desk.exchange.readHolidays();
    desk.fixture.serie.close();
    for (int call = 0; call < 11; ++call)
        desk.exchange.ProcesoDiferido();
    QVERIFY(desk.exchange.state() == State::GivingUp);
    QVERIFY(!desk.fixture.hasRequest());
}

void TestProgrammeExchange::endOfTheConnectionGivesUp_data()
{
    QTest::addColumn<State>("state");
    QTest::addColumn<bool>("awaitsAnAnswer");
    for (const bool awaits : {true, false}) {
        const QByteArray when = awaits ? ", answer awaited" : ", before the request";
        QTest::newRow("opening" + when) << State::Opening << awaits;
        QTest::newRow("send requested" + when) << State::SendRequested << awaits;
        QTest::newRow("writing blocks" + when) << State::WritingBlocks << awaits;
        QTest::newRow("writing holidays" + when) << State::WritingHolidays << awaits;
    }
}

void TestProgrammeExchange::endOfTheConnectionGivesUp()
{
    QFETCH(State, state);
    QFETCH(bool, awaitsAnAnswer);
    Desk desk;
    desk.exchange.send();
    desk.exchange.setState(state);
    if (awaitsAnAnswer)
        QVERIFY(!desk.nextRequest().isEmpty());
    desk.disconnect();
    QTRY_COMPARE(desk.failed.count(), 1);
    QVERIFY(desk.exchange.state() == State::Idle);
    QVERIFY(!desk.fixture.hasRequest());
}

void TestProgrammeExchange::endOfTheConnectionIsNotToldFromWithinIt()
{
    Desk desk;
    desk.exchange.send();
    desk.disconnect();
    QCOMPARE(desk.failed.count(), 0);
    QVERIFY(desk.exchange.state() == State::GivingUp);
}

void TestProgrammeExchange::endOfTheConnectionAfterTheLastRefusalIsToldOnce()
{
    Desk desk;
    desk.exchange.send();
    desk.exchange.setState(State::GivingUp);
    desk.disconnect();
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QCOMPARE(desk.failed.count(), 1);
    QVERIFY(desk.exchange.state() == State::Idle);
}

void TestProgrammeExchange::endOfTheConnectionUnderTheFailureIsNotToldAgain()
{
    Desk desk;
    connect(&desk.exchange, &ProgrammeExchange::failed, this, [&desk] {
        desk.disconnect();
        QCoreApplication::processEvents();
    });
    desk.exchange.send();
    desk.exchange.setState(State::GivingUp);
    desk.fixture.tick();
    QCoreApplication::processEvents();
    QCOMPARE(desk.failed.count(), 1);
    QVERIFY(desk.exchange.state() == State::Idle);
}

void TestProgrammeExchange::endOfTheConnectionWhileIdleIsNoFailure()
{
    Desk desk;
    desk.disconnect();
    QCoreApplication::processEvents();
    QCOMPARE(desk.failed.count(), 0);
    QVERIFY(desk.exchange.state() == State::Idle);
}

void TestProgrammeExchange::endOfTheProgramIsNoFailure()
{
    Desk desk;
    desk.exchange.send();
    desk.disconnect();
    desk.fixture.globais.ShuttingDown = true;
    QCoreApplication::processEvents();
    QCOMPARE(desk.failed.count(), 0);
}

void TestProgrammeExchange::withoutAConnectionASendingGivesUp()
{
    Desk desk;
    desk.disconnect();
    desk.exchange.send();
    QCOMPARE(desk.failed.count(), 0);
    QTRY_COMPARE(desk.failed.count(), 1);
    QVERIFY(desk.exchange.state() == State::Idle);
    desk.exchange.send();
    QTRY_COMPARE(desk.failed.count(), 2);
    QVERIFY(!desk.fixture.hasRequest());
}

void TestProgrammeExchange::withoutAConnectionAReadingGivesUp()
{
    Desk desk;
    desk.disconnect();
    desk.exchange.readHolidays();
    QTRY_COMPARE(desk.failed.count(), 1);
    QVERIFY(desk.exchange.state() == State::Idle);
}

void TestProgrammeExchange::newConnectionTakesASending()
{
    Desk desk;
    desk.disconnect();
    desk.fixture.connect();
    desk.exchange.send();
    QCOMPARE(desk.nextRequest(), QByteArray(1, '\0'));
    QCOMPARE(desk.failed.count(), 0);
}

void TestProgrammeExchange::stoppingAfterTheEndOfTheConnectionTellsNothing()
{
    Desk desk;
    desk.exchange.send();
    desk.disconnect();
    desk.exchange.stop();
    QCoreApplication::processEvents();
    QCOMPARE(desk.failed.count(), 0);
}

void TestProgrammeExchange::stoppingLeavesNothingBoundOrRegistered()
{
    Desk desk;
    desk.exchange.send();
    desk.fixture.tick();
    desk.fixture.takeRequest();
    desk.exchange.stop();
    desk.fixture.answer(samples::generalData(first));
    QVERIFY(desk.fixture.globais.GeneralData.isEmpty());
    desk.exchange.send();
    desk.exchange.readHolidays();
    desk.fixture.tick(20);
    QVERIFY(!desk.fixture.hasRequest());
}

void TestProgrammeExchange::exchangeDestroyedWhileTellingTheFailureIsNotTouched()
{
    LinkFixture fixture;
    const Programme programme;
    auto exchange = std::make_unique<OpenExchange>(
        ProgrammeExchange::Services{fixture.crono, fixture.link, fixture.globais, fixture.log},
        first, programme, [] { return HolidayTable(); });
    connect(exchange.get(), &ProgrammeExchange::failed, this, [&exchange] { exchange.reset(); });
    exchange->setState(State::GivingUp);
    exchange->ProcesoDiferido();
    QVERIFY(!exchange);
}

QTEST_GUILESS_MAIN(TestProgrammeExchange)
#include "TestProgrammeExchange.moc"
