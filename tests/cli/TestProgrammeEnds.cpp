#include "HctctlProcess.h"
#include "SchoolDesk.h"

#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

/// How the commands for the programme of a clock end without reading it twice. In the trace, "89
/// d9" asks for the holidays, and "69 da" writes an alarm block.
class TestProgrammeEnds : public QObject {
    Q_OBJECT
private slots:
    void writeWithoutVerificationTellsTheModelAsJson();
    void interruptionBeforeTheWriteLeavesTheProgramme();
    void silentClockEndsTheVerification();
};

void TestProgrammeEnds::writeWithoutVerificationTellsTheModelAsJson()
{
    SchoolDesk desk;
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, desk.changedFile(), u"--no-verify"_s, u"--json"_s}));
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.output(), u"{\"model\":\"HCT-7200\"}\n"_s);
}

void TestProgrammeEnds::interruptionBeforeTheWriteLeavesTheProgramme()
{
    SchoolDesk desk({u"--trace"_s, u"--fault"_s, u"silent always on days-read"_s});
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, desk.changedFile()}));
    QVERIFY(desk.clock.waitForRequests(u"89 d9"_s, 1));
    run.sendSignal(SIGINT);
    QCOMPARE(run.exitStatus(), 128 + SIGINT);
    QCOMPARE(run.errors(),
             u"Interrumpido. No se ha enviado nada: el reloj conserva su programa.\n"_s);
    QCOMPARE(desk.clock.requestCount(u"69 da"_s), 0);
}

void TestProgrammeEnds::silentClockEndsTheVerification()
{
    SchoolDesk desk({u"--fault"_s, u"silent always on days-read"_s});
    HctctlProcess run;
    run.start(desk.arguments({u"verify"_s, desk.changedFile()}));
    QCOMPARE(run.exitStatus(), 4);
    QCOMPARE(run.errors(), u"El reloj ha dejado de contestar: compruebe el cable.\n"_s);
}

QTEST_GUILESS_MAIN(TestProgrammeEnds)
#include "TestProgrammeEnds.moc"
