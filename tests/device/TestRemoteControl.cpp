#include "CronoRegistration.h"
#include "LinkFixture.h"
#include "RemoteControl.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using NextAction = RemoteControl::NextAction;

namespace {

/// A remote control registered as its window registers it, on an open line.
struct Remote : LinkFixture {
    explicit Remote(bool manual) : control(link, manual)
    {
        connect();
        registration.ActivaCliente();
    }

    RemoteControl control;
    CronoRegistration registration{crono, control, 3};

    QByteArray next()
    {
        tick(3);
        return takeRequest().text();
    }
    QList<int> positions() const
    {
        return {control.position(0), control.position(1), control.position(2)};
    }
};

} // namespace

class TestRemoteControl : public QObject {
    Q_OBJECT
private slots:
    void firstRequestReadsTheStateInTheModeOfTheStart();
    void automaticModeRepeatsTheStateRead();
    void manualModeAlternatesCommandAndStateRead();
    void oneRequestEveryThreeTicks();
    void firstStateInManualModePlacesTheSwitches();
    void laterStatesInManualModeLeaveTheSwitchesAlone();
    void switchesFollowTheClockInAutomaticMode();
    void switchThatStaysIsNotMoved();
    void stateBitsPlaceTheSwitches_data();
    void stateBitsPlaceTheSwitches();
    void offMaskHasABitForEachSwitchAtZero_data();
    void offMaskHasABitForEachSwitchAtZero();
    void operatorMovesNothingInAutomaticMode();
    void toggleBeforeTheFirstStateSendsNothingUntilItWasShown();
    void turningManualCommandsOnceTheStateIsKnown();
    void turningManualBeforeTheFirstStateWaitsForIt();
    void turningAutomaticLeavesADueCommandAndThenOnlyReads();
    void turningAutomaticDuringTheReadReadsWithMode0();
    void failedCommandIsRepeated_data();
    void failedCommandIsRepeated();
    void failedStateReadIsRepeated_data();
    void failedStateReadIsRepeated();
    void stateAnswerMayBeLonger();
    void closedPortChangesNothing();
    void nothingReachesAStoppedControl_data();
    void nothingReachesAStoppedControl();
    void reasonOfAFailureIsTold();
};

void TestRemoteControl::firstRequestReadsTheStateInTheModeOfTheStart()
{
    Remote automatic(false);
    QVERIFY(automatic.control.nextAction() == NextAction::ReadState);
    QCOMPARE(automatic.next(), QByteArray("137 ca00"));
    Remote manual(true);
    QCOMPARE(manual.next(), QByteArray("137 ca01"));
}

void TestRemoteControl::automaticModeRepeatsTheStateRead()
{
    Remote remote(false);
    for (int round = 0; round < 4; ++round) {
        QCOMPARE(remote.next(), QByteArray("137 ca00"));
        remote.answerHex("ca07");
    }
}

void TestRemoteControl::manualModeAlternatesCommandAndStateRead()
{
    Remote remote(true);
    QCOMPARE(remote.next(), QByteArray("137 ca01"));
    remote.answerHex("ca05");
    for (int round = 0; round < 3; ++round) {
        QCOMPARE(remote.next(), QByteArray("105 cb05"));
        remote.answerHex("cb00");
        QCOMPARE(remote.next(), QByteArray("137 ca01"));
        remote.answerHex("ca05");
    }
}

void TestRemoteControl::oneRequestEveryThreeTicks()
{
    Remote remote(false);
    remote.tick(2);
    QVERIFY(!remote.hasRequest());
    remote.tick(1);
    QVERIFY(remote.hasRequest());
}

void TestRemoteControl::firstStateInManualModePlacesTheSwitches()
{
    Remote remote(true);
    remote.next();
    remote.answerHex("ca05");
    QCOMPARE(remote.positions(), QList<int>({0, 1, 0}));
    QVERIFY(remote.control.StateKnown());
}

void TestRemoteControl::laterStatesInManualModeLeaveTheSwitchesAlone()
{
    Remote remote(true);
    QSignalSpy shown(&remote.control, &RemoteControl::stateRead);
    remote.next();
    remote.answerHex("ca05");
    remote.next();
    remote.answerHex("cb00");
    remote.next();
    remote.answerHex("ca02");
    QCOMPARE(remote.positions(), QList<int>({0, 1, 0}));
    QCOMPARE(shown.count(), 2);
    QCOMPARE(shown.last().at(0).value<quint8>(), quint8(0x02));
}

void TestRemoteControl::switchesFollowTheClockInAutomaticMode()
{
    Remote remote(false);
    remote.next();
    remote.answerHex("ca05");
    QCOMPARE(remote.positions(), QList<int>({0, 1, 0}));
    remote.next();
    remote.answerHex("ca02");
    QCOMPARE(remote.positions(), QList<int>({1, 0, 1}));
}

void TestRemoteControl::switchThatStaysIsNotMoved()
{
    Remote remote(false);
    remote.next();
    remote.answerHex("ca05");
    QSignalSpy moved(&remote.control, &RemoteControl::switchMoved);
    remote.next();
    remote.answerHex("ca04");
    QCOMPARE(moved.count(), 1);
    QCOMPARE(moved[0][0].toInt(), 0);
}

void TestRemoteControl::stateBitsPlaceTheSwitches_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QList<int>>("positions");
    QTest::newRow("all at rest") << QByteArray("ca07") << QList<int>{0, 0, 0};
    QTest::newRow("all on") << QByteArray("ca00") << QList<int>{1, 1, 1};
    QTest::newRow("0 and 2 at rest") << QByteArray("ca05") << QList<int>{0, 1, 0};
    QTest::newRow("higher bits mean nothing") << QByteArray("caf8") << QList<int>{1, 1, 1};
}

void TestRemoteControl::stateBitsPlaceTheSwitches()
{
    QFETCH(QByteArray, answer);
    Remote remote(false);
    remote.next();
    remote.answerHex(answer);
    QTEST(remote.positions(), "positions");
}

void TestRemoteControl::offMaskHasABitForEachSwitchAtZero_data()
{
    QTest::addColumn<QList<int>>("positions");
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("all at 1") << QList<int>{1, 1, 1} << QByteArray("105 cb00");
    QTest::newRow("all at 0") << QList<int>{0, 0, 0} << QByteArray("105 cb07");
    QTest::newRow("switch 0 at 1") << QList<int>{1, 0, 0} << QByteArray("105 cb06");
    QTest::newRow("switch 1 at 1") << QList<int>{0, 1, 0} << QByteArray("105 cb05");
    QTest::newRow("switch 2 at 1") << QList<int>{0, 0, 1} << QByteArray("105 cb03");
}

void TestRemoteControl::offMaskHasABitForEachSwitchAtZero()
{
    QFETCH(QList<int>, positions);
    Remote remote(true);
    remote.next();
    remote.answerHex("ca05");
    for (int i = 0; i < 3; ++i)
        remote.control.setPosition(i, positions[i]);
    QTEST(remote.next(), "request");
}

void TestRemoteControl::operatorMovesNothingInAutomaticMode()
{
    Remote remote(false);
    remote.next();
    remote.answerHex("ca05");
    remote.control.toggle(0);
    remote.control.setPosition(1, 0);
    QCOMPARE(remote.positions(), QList<int>({0, 1, 0}));
}

void TestRemoteControl::toggleBeforeTheFirstStateSendsNothingUntilItWasShown()
{
    Remote remote(true);
    remote.control.toggle(2);
    QCOMPARE(remote.positions(), QList<int>({0, 0, 1}));
    QCOMPARE(remote.next(), QByteArray("137 ca01"));
    remote.control.toggle(1);
    remote.timeOut();
    QCOMPARE(remote.next(), QByteArray("137 ca01"));
    remote.answerHex("ca07");
    QCOMPARE(remote.positions(), QList<int>({0, 0, 0}));
    QCOMPARE(remote.next(), QByteArray("105 cb07"));
}

void TestRemoteControl::turningManualCommandsOnceTheStateIsKnown()
{
    Remote remote(false);
    remote.next();
    remote.answerHex("ca03");
    remote.control.setManual(true);
    QCOMPARE(remote.next(), QByteArray("105 cb03"));
    remote.answerHex("cb00");
    QCOMPARE(remote.next(), QByteArray("137 ca01"));
}

void TestRemoteControl::turningManualBeforeTheFirstStateWaitsForIt()
{
    Remote remote(false);
    remote.control.setManual(true);
    QCOMPARE(remote.next(), QByteArray("137 ca01"));
    remote.answerHex("ca03");
    QCOMPARE(remote.next(), QByteArray("105 cb03"));
}

void TestRemoteControl::turningAutomaticLeavesADueCommandAndThenOnlyReads()
{
    Remote remote(true);
    remote.next();
    remote.answerHex("ca05");
    remote.control.setManual(false);
    QCOMPARE(remote.next(), QByteArray("105 cb05"));
    remote.timeOut();
    QCOMPARE(remote.next(), QByteArray("105 cb05"));
    remote.answerHex("cb00");
    for (int round = 0; round < 3; ++round) {
        QCOMPARE(remote.next(), QByteArray("137 ca00"));
        remote.answerHex("ca05");
    }
}

void TestRemoteControl::turningAutomaticDuringTheReadReadsWithMode0()
{
    Remote remote(true);
    QCOMPARE(remote.next(), QByteArray("137 ca01"));
    remote.control.setManual(false);
    remote.answerHex("ca05");
    QCOMPARE(remote.next(), QByteArray("137 ca00"));
}

void TestRemoteControl::reasonOfAFailureIsTold()
{
    Remote remote(true);
    QList<LinkStatus> told;
    QObject::connect(&remote.control, &RemoteControl::requestFailed,
                     [&told](LinkStatus status) { told += status; });
    remote.next();
    remote.timeOut();
    remote.next();
    remote.answerHex("ca05");
    remote.next();
    remote.answerHex("cb01");
    QVERIFY(told == (QList{LinkStatus::TimeOut, LinkStatus::WrongAnswer}));
}

void TestRemoteControl::failedCommandIsRepeated_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("code");
    QTest::newRow("refusal") << QByteArray("cb01") << 8;
    QTest::newRow("wrong echo") << QByteArray("ca00") << 8;
    QTest::newRow("one byte") << QByteArray("cb") << 8;
    QTest::newRow("no byte") << QByteArray() << 8;
    QTest::newRow("another code") << QByteArray("cb00") << 9;
}

void TestRemoteControl::failedCommandIsRepeated()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, code);
    Remote remote(true);
    remote.next();
    remote.answerHex("ca05");
    for (int round = 0; round < 5; ++round) {
        QCOMPARE(remote.next(), QByteArray("105 cb05"));
        remote.answer(QByteArray::fromHex(answer), quint8(code));
        QCOMPARE(remote.next(), QByteArray("105 cb05"));
        remote.timeOut();
        QCOMPARE(remote.next(), QByteArray("105 cb05"));
        remote.answerDamaged(QByteArray::fromHex("cb00"));
    }
    QVERIFY(remote.log.lines.isEmpty());
}

void TestRemoteControl::failedStateReadIsRepeated_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("code");
    QTest::newRow("wrong echo") << QByteArray("cb02") << 8;
    QTest::newRow("one byte") << QByteArray("ca") << 8;
    QTest::newRow("no byte") << QByteArray() << 8;
    QTest::newRow("another code") << QByteArray("ca02") << 9;
}

void TestRemoteControl::failedStateReadIsRepeated()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, code);
    Remote remote(false);
    remote.next();
    remote.answerHex("ca05");
    QSignalSpy shown(&remote.control, &RemoteControl::stateRead);
    for (int round = 0; round < 5; ++round) {
        QCOMPARE(remote.next(), QByteArray("137 ca00"));
        remote.answer(QByteArray::fromHex(answer), quint8(code));
        QCOMPARE(remote.next(), QByteArray("137 ca00"));
        remote.timeOut();
        QCOMPARE(remote.next(), QByteArray("137 ca00"));
        remote.answerDamaged(QByteArray::fromHex("ca02"));
    }
    QCOMPARE(shown.count(), 0);
    QCOMPARE(remote.positions(), QList<int>({0, 1, 0}));
    QCOMPARE(remote.next(), QByteArray("137 ca00"));
    remote.answerHex("ca02");
    QCOMPARE(shown.count(), 1);
}

void TestRemoteControl::stateAnswerMayBeLonger()
{
    Remote remote(false);
    remote.next();
    remote.answerHex("ca02ffff");
    QCOMPARE(remote.positions(), QList<int>({1, 0, 1}));
}

void TestRemoteControl::closedPortChangesNothing()
{
    Remote remote(false);
    remote.serie.vanish();
    QCOMPARE(remote.next(), QByteArray("none"));
    QVERIFY(remote.control.nextAction() == NextAction::ReadState);
    QVERIFY(!remote.control.StateKnown());
}

void TestRemoteControl::nothingReachesAStoppedControl_data()
{
    QTest::addColumn<bool>("isCommandAwaited");
    QTest::newRow("the state read is awaited") << false;
    QTest::newRow("the command is awaited") << true;
}

void TestRemoteControl::nothingReachesAStoppedControl()
{
    QFETCH(bool, isCommandAwaited);
    Remote remote(true);
    remote.next();
    if (isCommandAwaited) {
        remote.answerHex("ca05");
        QCOMPARE(remote.next(), QByteArray("105 cb05"));
    }
    QSignalSpy shown(&remote.control, &RemoteControl::stateRead);
    remote.control.stop();
    remote.answerHex(isCommandAwaited ? "cb00" : "ca05");
    QCOMPARE(shown.count(), 0);
    QVERIFY(remote.control.nextAction() == NextAction::None);
    QCOMPARE(remote.next(), QByteArray("none"));
}

QTEST_GUILESS_MAIN(TestRemoteControl)
#include "TestRemoteControl.moc"
