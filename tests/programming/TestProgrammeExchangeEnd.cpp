#include "ExchangeDesk.h"

#include <QTest>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using State = ProgrammeExchange::State;

constexpr auto hct7200 = ClockModel::Hct7200;

/// How an exchange fails: by refusals, the end of the connection, or the closing of its window.
class TestProgrammeExchangeEnd : public QObject {
    Q_OBJECT
private slots:
    void generalDataOf219BytesElevenTimesGivesUpAndWritesNothing();
    void tenRefusalsAreForgiven();
    void refusalsOfTheOpeningCountForTheSending();
    void secondSendingAfterAFailureEndsAtItsFirstRefusal();
    void nothingIsSentAfterGivingUp();
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
    void idleExchangeLeavesTheTimerServiceAsleep_data();
    void idleExchangeLeavesTheTimerServiceAsleep();
    void stoppedExchangeTakesNoAnswer_data();
    void stoppedExchangeTakesNoAnswer();
    void stoppingLeavesNothingBoundOrRegistered();
    void exchangeDestroyedWhileTellingTheFailureIsNotTouched();
};

void TestProgrammeExchangeEnd::generalDataOf219BytesElevenTimesGivesUpAndWritesNothing()
{
    ExchangeDesk desk;
    desk.exchange.send();
    for (int refusal = 0; refusal < 11; ++refusal) {
        QCOMPARE(desk.nextRequestBody(), QByteArray(1, '\0'));
        QCOMPARE(desk.failed.count(), 0);
        desk.answer(samples::generalData(hct7200).left(219));
    }
    QVERIFY(desk.exchange.state() == State::GivingUp);
    QCOMPARE(desk.nextRequestBody(), QByteArray());
    QCOMPARE(desk.failed.count(), 1);
    QVERIFY(desk.exchange.state() == State::Idle);
}

void TestProgrammeExchangeEnd::tenRefusalsAreForgiven()
{
    ExchangeDesk desk;
    desk.exchange.send();
    for (int refusal = 0; refusal < 10; ++refusal) {
        desk.tick();
        desk.timeOut();
    }
    desk.tick();
    desk.answer(samples::generalData(hct7200));
    QVERIFY(desk.exchange.state() == State::WritingBlocks);
}

void TestProgrammeExchangeEnd::refusalsOfTheOpeningCountForTheSending()
{
    ExchangeDesk desk;
    desk.exchange.readHolidays();
    for (int refusal = 0; refusal < 10; ++refusal) {
        desk.tick();
        desk.refuse(0xD9);
    }
    desk.tick();
    desk.answer(samples::holidaysAnswer());
    desk.exchange.send();
    desk.tick();
    desk.refuse(0x00);
    QVERIFY(desk.exchange.state() == State::GivingUp);
}

void TestProgrammeExchangeEnd::secondSendingAfterAFailureEndsAtItsFirstRefusal()
{
    ExchangeDesk desk;
    desk.exchange.send();
    for (int call = 0; call < 12; ++call) {
        desk.tick();
        desk.timeOut();
    }
    QCOMPARE(desk.failed.count(), 1);
    desk.exchange.send();
    desk.tick();
    desk.answer(samples::generalData(hct7200));
    desk.tick();
    desk.refuse(0xDA);
    desk.tick();
    QCOMPARE(desk.failed.count(), 2);
}

void TestProgrammeExchangeEnd::nothingIsSentAfterGivingUp()
{
    ExchangeDesk desk;
    desk.reachGivingUp();
    desk.exchange.ProcesoDiferido();
    desk.tick(50);
    QVERIFY(!desk.hasRequest());
    QCOMPARE(desk.failed.count(), 1);
}

void TestProgrammeExchangeEnd::everyRefusalIsLogged()
{
    ExchangeDesk desk;
    desk.exchange.readHolidays();
    desk.tick();
    desk.timeOut();
    desk.reach(State::WritingBlocks);
    desk.tick();
    desk.refuse(0xDA);
    QCOMPARE(desk.log.lines,
             (QStringList{u"Fallo en lectura de festivos y vacaciones (estado 1)"_s,
                          u"Fallo en escritura del bloque de avisos 1 (estado 8)"_s}));
    QCOMPARE(desk.log.timesShown, 0);
}

void TestProgrammeExchangeEnd::closedPortIsARefusal()
{
    ExchangeDesk desk;
    desk.exchange.readHolidays();
    desk.serie.close();
    for (int call = 0; call < 11; ++call)
        desk.exchange.ProcesoDiferido();
    QVERIFY(desk.exchange.state() == State::GivingUp);
    QVERIFY(!desk.hasRequest());
}

void TestProgrammeExchangeEnd::endOfTheConnectionGivesUp_data()
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

void TestProgrammeExchangeEnd::endOfTheConnectionGivesUp()
{
    QFETCH(State, state);
    QFETCH(bool, awaitsAnAnswer);
    ExchangeDesk desk;
    desk.reach(state);
    if (awaitsAnAnswer)
        QVERIFY(!desk.nextRequestBody().isEmpty());
    desk.disconnect();
    QTRY_COMPARE(desk.failed.count(), 1);
    QVERIFY(desk.exchange.state() == State::Idle);
    QVERIFY(!desk.hasRequest());
}

void TestProgrammeExchangeEnd::endOfTheConnectionIsNotToldFromWithinIt()
{
    ExchangeDesk desk;
    desk.exchange.send();
    desk.disconnect();
    QCOMPARE(desk.failed.count(), 0);
    QVERIFY(desk.exchange.state() == State::GivingUp);
}

void TestProgrammeExchangeEnd::endOfTheConnectionAfterTheLastRefusalIsToldOnce()
{
    ExchangeDesk desk;
    desk.reachGivingUp();
    desk.disconnect();
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QCOMPARE(desk.failed.count(), 1);
    QVERIFY(desk.exchange.state() == State::Idle);
}

void TestProgrammeExchangeEnd::endOfTheConnectionUnderTheFailureIsNotToldAgain()
{
    ExchangeDesk desk;
    connect(&desk.exchange, &ProgrammeExchange::failed, this, [&desk] {
        desk.disconnect();
        QCoreApplication::processEvents();
    });
    desk.reachGivingUp();
    desk.tick();
    QCoreApplication::processEvents();
    QCOMPARE(desk.failed.count(), 1);
    QVERIFY(desk.exchange.state() == State::Idle);
}

void TestProgrammeExchangeEnd::endOfTheConnectionWhileIdleIsNoFailure()
{
    ExchangeDesk desk;
    desk.disconnect();
    QCoreApplication::processEvents();
    QCOMPARE(desk.failed.count(), 0);
    QVERIFY(desk.exchange.state() == State::Idle);
}

void TestProgrammeExchangeEnd::endOfTheProgramIsNoFailure()
{
    ExchangeDesk desk;
    desk.exchange.send();
    desk.disconnect();
    desk.globais.ShuttingDown = true;
    QCoreApplication::processEvents();
    QCOMPARE(desk.failed.count(), 0);
}

void TestProgrammeExchangeEnd::withoutAConnectionASendingGivesUp()
{
    ExchangeDesk desk;
    desk.disconnect();
    desk.exchange.send();
    QCOMPARE(desk.failed.count(), 0);
    QTRY_COMPARE(desk.failed.count(), 1);
    QVERIFY(desk.exchange.state() == State::Idle);
    desk.exchange.send();
    QTRY_COMPARE(desk.failed.count(), 2);
    QVERIFY(!desk.hasRequest());
}

void TestProgrammeExchangeEnd::withoutAConnectionAReadingGivesUp()
{
    ExchangeDesk desk;
    desk.disconnect();
    desk.exchange.readHolidays();
    QTRY_COMPARE(desk.failed.count(), 1);
    QVERIFY(desk.exchange.state() == State::Idle);
}

void TestProgrammeExchangeEnd::newConnectionTakesASending()
{
    ExchangeDesk desk;
    desk.disconnect();
    desk.connect();
    desk.exchange.send();
    QCOMPARE(desk.nextRequestBody(), QByteArray(1, '\0'));
    QCOMPARE(desk.failed.count(), 0);
}

void TestProgrammeExchangeEnd::stoppingAfterTheEndOfTheConnectionTellsNothing()
{
    ExchangeDesk desk;
    desk.exchange.send();
    desk.disconnect();
    desk.exchange.stop();
    QCoreApplication::processEvents();
    QCOMPARE(desk.failed.count(), 0);
}

void TestProgrammeExchangeEnd::idleExchangeLeavesTheTimerServiceAsleep_data()
{
    using End = std::function<void(ExchangeDesk&)>;
    QTest::addColumn<End>("end");
    QTest::newRow("not begun") << End([](ExchangeDesk&) {});
    QTest::newRow("holidays read") << End([](ExchangeDesk& desk) {
        desk.reach(State::Opening);
        desk.nextRequestBody();
        desk.answer(samples::holidaysAnswer());
        QCOMPARE(desk.holidaysRead.count(), 1);
    });
    QTest::newRow("sent") << End([](ExchangeDesk& desk) {
        desk.reach(State::WritingHolidays);
        desk.nextRequestBody();
        desk.answerHex("cb00");
        QCOMPARE(desk.sent.count(), 1);
    });
    QTest::newRow("given up") << End([](ExchangeDesk& desk) {
        desk.reachGivingUp();
        desk.tick();
        QCOMPARE(desk.failed.count(), 1);
    });
}

void TestProgrammeExchangeEnd::idleExchangeLeavesTheTimerServiceAsleep()
{
    QFETCH(std::function<void(ExchangeDesk&)>, end);
    ExchangeDesk desk;
    end(desk);
    QVERIFY(desk.exchange.state() == State::Idle);
    QCOMPARE(desk.wakeUps(100), 0);
    // The next exchange begins on the next tick.
    desk.exchange.send();
    QCOMPARE(desk.nextRequestBody(), QByteArray(1, '\0'));
}

void TestProgrammeExchangeEnd::stoppedExchangeTakesNoAnswer_data()
{
    QTest::addColumn<State>("state");
    QTest::newRow("opening") << State::Opening;
    QTest::newRow("send requested") << State::SendRequested;
    QTest::newRow("writing blocks") << State::WritingBlocks;
    QTest::newRow("writing holidays") << State::WritingHolidays;
}

void TestProgrammeExchangeEnd::stoppedExchangeTakesNoAnswer()
{
    QFETCH(State, state);
    ExchangeDesk desk;
    desk.reach(state);
    desk.nextRequestBody();
    desk.exchange.stop();
    desk.refuse(0x77);
    QVERIFY(desk.log.lines.isEmpty());
    QCOMPARE(desk.sent.count(), 0);
}

void TestProgrammeExchangeEnd::stoppingLeavesNothingBoundOrRegistered()
{
    ExchangeDesk desk;
    desk.exchange.send();
    desk.tick();
    desk.takeRequest();
    desk.exchange.stop();
    desk.answer(samples::generalData(hct7200));
    QVERIFY(desk.globais.GeneralData.isEmpty());
    desk.exchange.send();
    desk.exchange.readHolidays();
    desk.tick(20);
    QVERIFY(!desk.hasRequest());
}

void TestProgrammeExchangeEnd::exchangeDestroyedWhileTellingTheFailureIsNotTouched()
{
    LinkFixture fixture;
    const Programme programme;
    auto exchange = std::make_unique<ProgrammeExchange>(
        ProgrammeExchange::Services{fixture.crono, fixture.link, fixture.globais, fixture.log},
        hct7200, programme, [] { return HolidayTable(); });
    connect(exchange.get(), &ProgrammeExchange::failed, this, [&exchange] { exchange.reset(); });
    exchange->send();
    QVERIFY(exchange->state() == State::GivingUp);
    exchange->ProcesoDiferido();
    QVERIFY(!exchange);
}

QTEST_GUILESS_MAIN(TestProgrammeExchangeEnd)
#include "TestProgrammeExchangeEnd.moc"
