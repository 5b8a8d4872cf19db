#include "ConnectedProgram.h"
#include "ConnectionWorkflow.h"
#include "frmPrincipal.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString interrupted = u"Conexión interrumpida"_s;
const QString connecting = u"Estableciendo conexión..."_s;
const QString failure = u"Fallo en identificación del equipo"_s;
const QString accepted = u"Identificación aceptada"_s;
const QString established = u"Conexión establecida"_s;

/// A fault of the simulated clock, and whether the program takes the answer in spite of it. The
/// places are those of both answers: 0 to 3 and 4 are start, L and station, 5 is the code, 6 the
/// selector.
struct Spoiling {
    const char* fault;
    bool isTaken;
};

constexpr Spoiling spoilings[] = {
    {"length", false},           {"length -2", false},       {"length -1", false},
    {"length 100", false},       {"doubled", true},          {"joined", true},
    {"joined 00ff68", true},     {"changed 0", false},       {"changed 1", false},
    {"changed 2", false},        {"changed 3", false},       {"changed 4", false},
    {"changed 5", false},        {"changed 6", false},       {"changed 7 xor 1", false},
    {"changed 0 set 72", false}, {"changed 4 set 2", false}, {"stray -2000", true},
    {"stray 0", true},           {"stray 2000", true},
};

QString reading(const Spoiling& spoiling) { return QString::fromLatin1(spoiling.fault); }

} // namespace

/// The answers to identification and general data are spoiled on the way from the simulated clock.
/// What the operator sees of it, and whether the connection goes on.
class TestSpoiledAnswers : public QObject {
    Q_OBJECT
private slots:
    void firstIdentificationIsRepeatedUnlessItsAnswerCanBeTaken_data();
    void firstIdentificationIsRepeatedUnlessItsAnswerCanBeTaken();
    void fourSpoiledIdentificationsEndTheConnection_data();
    void fourSpoiledIdentificationsEndTheConnection();
    void spoiledPollIsNotSeen_data();
    void spoiledPollIsNotSeen();
    void loneByteInPlaceOfAnAnswerIsNotSeen();
    void fourSpoiledPollsLeadToAnIdentificationOnly_data();
    void fourSpoiledPollsLeadToAnIdentificationOnly();
    void changedEndOfAFrameIsNoFault();
    void lineLostInAnAnswerEndsTheConnectionUntilItReturns_data();
    void lineLostInAnAnswerEndsTheConnectionUntilItReturns();

private:
    /// Waits for three more answers that no fault has struck.
    static void seeGoodAnswers(ConnectedProgram& run);
};

void TestSpoiledAnswers::seeGoodAnswers(ConnectedProgram& run)
{
    const int good = run.clock.state(u"good"_s).toInt();
    QTRY_VERIFY_WITH_TIMEOUT(run.clock.state(u"good"_s).toInt() >= good + 3, patience);
    QTRY_COMPARE_WITH_TIMEOUT(run.program.session().workflow().FailedAttempts(), 0, patience);
    QVERIFY(run.isEstablished());
    QCOMPARE(run.panel(1), u"Conectado"_s);
    QVERIFY(run.dialogs.boxes.isEmpty());
}

void TestSpoiledAnswers::firstIdentificationIsRepeatedUnlessItsAnswerCanBeTaken_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QStringList>("log");
    const QStringList repeated{interrupted, connecting, failure, accepted, established};
    const QStringList taken{interrupted, connecting, accepted, established};
    for (const Spoiling& spoiling : spoilings)
        QTest::newRow(spoiling.fault) << reading(spoiling) << (spoiling.isTaken ? taken : repeated);
}

void TestSpoiledAnswers::firstIdentificationIsRepeatedUnlessItsAnswerCanBeTaken()
{
    QFETCH(QString, fault);
    ConnectedProgram run({u"--fault"_s, fault + u" on identification"_s});
    QVERIFY(run.connectToClock());
    QTEST(run.logLines(), "log");
    seeGoodAnswers(run);
    QTEST(run.logLines(), "log");
}

void TestSpoiledAnswers::fourSpoiledIdentificationsEndTheConnection_data()
{
    QTest::addColumn<QString>("fault");
    for (const char* fault : {"length", "length -2", "changed 4", "changed 7 xor 1"})
        QTest::newRow(fault) << QString::fromLatin1(fault);
}

void TestSpoiledAnswers::fourSpoiledIdentificationsEndTheConnection()
{
    QFETCH(QString, fault);
    ConnectedProgram run({u"--fault"_s, fault + u" times 4 on identification"_s});
    run.choose("mnuConectar");
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(interrupted), 2, patience);
    QCOMPARE(run.logLines(), (QStringList{interrupted, connecting, failure, failure, failure,
                                          failure, interrupted}));
    QCOMPARE(run.panel(1), u"Desconectado"_s);
    QVERIFY(run.connectToClock());
    seeGoodAnswers(run);
}

void TestSpoiledAnswers::spoiledPollIsNotSeen_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("fault");
    for (const Spoiling& spoiling : spoilings)
        QTest::addRow("HCT-7200, %s", spoiling.fault) << u"7200"_s << reading(spoiling);
    for (const char* fault : {"length", "doubled", "joined", "changed 7 xor 1", "stray 0"})
        QTest::addRow("HCT-7300, %s", fault) << u"7300"_s << QString::fromLatin1(fault);
}

void TestSpoiledAnswers::spoiledPollIsNotSeen()
{
    QFETCH(QString, model);
    QFETCH(QString, fault);
    ConnectedProgram run(
        {u"--model"_s, model, u"--start"_s, u"2026-11-20T08:59:50"_s, u"--frozen"_s});
    QVERIFY(run.connectToClock());
    run.choose("mnuInformacion");
    const QByteArray window = "frmInfoHCT" + model.toLatin1();
    QTRY_COMPARE_WITH_TIMEOUT(run.text(window, "lblHora"), u"8:59:50 "_s, patience);
    const QStringList log = run.logLines();
    run.clock.command(u"fault %1 on general"_s.arg(fault));
    QTRY_VERIFY_WITH_TIMEOUT(run.clock.command(u"faults"_s).isEmpty(), patience);
    seeGoodAnswers(run);
    QCOMPARE(run.text(window, "lblHora"), u"8:59:50 "_s);
    run.clock.command(u"time 2026-11-20T10:11:12"_s);
    QTRY_COMPARE_WITH_TIMEOUT(run.text(window, "lblHora"), u"10:11:12 "_s, patience);
    QCOMPARE(run.logLines(), log);
}

void TestSpoiledAnswers::loneByteInPlaceOfAnAnswerIsNotSeen()
{
    ConnectedProgram run;
    QVERIFY(run.connectToClock());
    const QStringList log = run.logLines();
    // The byte comes while the answer is awaited.
    run.clock.command(u"fault silent times 3 on general"_s);
    run.clock.command(u"fault stray 300000 times 3 on general"_s);
    QTRY_VERIFY_WITH_TIMEOUT(run.clock.command(u"faults"_s).isEmpty(), patience);
    seeGoodAnswers(run);
    QCOMPARE(run.logLines(), log);
}

void TestSpoiledAnswers::fourSpoiledPollsLeadToAnIdentificationOnly_data()
{
    QTest::addColumn<QString>("fault");
    for (const char* fault : {"length", "length -2", "changed 4", "changed 30 xor 1"})
        QTest::newRow(fault) << QString::fromLatin1(fault);
}

void TestSpoiledAnswers::fourSpoiledPollsLeadToAnIdentificationOnly()
{
    QFETCH(QString, fault);
    ConnectedProgram run;
    QVERIFY(run.connectToClock());
    run.choose("mnuInformacion");
    const QStringList log = run.logLines();
    run.clock.command(u"fault %1 times 4 on general"_s.arg(fault));
    QTRY_COMPARE_WITH_TIMEOUT(run.logLines(), log + QStringList{accepted}, patience);
    seeGoodAnswers(run);
    QVERIFY(run.shownForm("frmInfoHCT7200"));
    QCOMPARE(run.logLines(), log + QStringList{accepted});
}

// The program does not look at the byte after the checksum.
void TestSpoiledAnswers::changedEndOfAFrameIsNoFault()
{
    ConnectedProgram run({u"--fault"_s, u"changed 9 always on identification"_s, u"--fault"_s,
                          u"changed 227 always on general"_s});
    QVERIFY(run.connectToClock());
    const int spoiled = run.clock.state(u"spoiled"_s).toInt();
    QTRY_VERIFY_WITH_TIMEOUT(run.clock.state(u"spoiled"_s).toInt() >= spoiled + 8, patience);
    QCOMPARE(run.logLines(), (QStringList{interrupted, connecting, accepted, established}));
}

void TestSpoiledAnswers::lineLostInAnAnswerEndsTheConnectionUntilItReturns_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QStringList>("log");
    const QStringList end{failure, failure, failure, failure, interrupted};
    for (const int bytes : {0, 1, 4, 5, 9})
        QTest::addRow("%d bytes of an identification", bytes)
            << u"unplug %1 on identification"_s.arg(bytes)
            << QStringList{interrupted, connecting} + end;
    QTest::newRow("the whole identification")
        << u"unplug 10 on identification"_s << QStringList{interrupted, connecting, accepted} + end;
    for (const int bytes : {0, 4, 5, 100, 227, 228})
        QTest::addRow("%d bytes of a poll", bytes)
            << u"unplug %1 after 3 on general"_s.arg(bytes)
            << QStringList{interrupted, connecting, accepted, established} + end;
}

void TestSpoiledAnswers::lineLostInAnAnswerEndsTheConnectionUntilItReturns()
{
    QFETCH(QString, fault);
    ConnectedProgram run({u"--fault"_s, fault});
    run.choose("mnuConectar");
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(interrupted), 2, patience);
    QTEST(run.logLines(), "log");
    QCOMPARE(run.panel(1), u"Desconectado"_s);
    run.clock.command(u"return"_s);
    qputenv("HCT_COM1", run.clock.state(u"device"_s).toLocal8Bit());
    QVERIFY(run.connectToClock());
    seeGoodAnswers(run);
}

QTEST_MAIN(TestSpoiledAnswers)
#include "TestSpoiledAnswers.moc"
