#include "PlayedSession.h"

#include <QTest>

/// What would be a fault of the program, made from outside of it, is noticed.
class TestInvariants : public QObject {
    Q_OBJECT
private slots:
    void aRightSessionViolatesNothing();
    void aFaultIsNoticed_data();
    void aFaultIsNoticed();
};

using Deed = std::function<void(PlayedSession&)>;
Q_DECLARE_METATYPE(Deed)

namespace {

void answerNextRequest(PlayedSession& session)
{
    for (int tick = 0; tick < 10 && !session.invariants.isAwaiting(); ++tick)
        session.tick();
    session.arrive(session.clockAnswers());
}

void establish(PlayedSession& session)
{
    session.Conectar();
    answerNextRequest(session);
    answerNextRequest(session);
}

void sendProgramme(PlayedSession& session, int requests)
{
    session.windows.openProgramme();
    session.windows.sendProgramme();
    while (requests-- > 0) {
        session.tick();
        session.arrive(session.clockAnswers());
    }
}

} // namespace

void TestInvariants::aRightSessionViolatesNothing()
{
    PlayedSession session;
    establish(session);
    sendProgramme(session, 5);
    session.Desconectar();
    QCOMPARE(session.invariants.violation(), "");
    QCOMPARE(session.invariants.shown.sent, 1);
}

void TestInvariants::aFaultIsNoticed_data()
{
    QTest::addColumn<Deed>("deed");
    QTest::addColumn<QByteArray>("violation");
    const auto row = [](const char* name, Deed deed, const char* violation) {
        QTest::newRow(name) << std::move(deed) << QByteArray(violation);
    };
    row(
        "second request before the answer",
        [](PlayedSession& session) {
            while (!session.invariants.isAwaiting())
                session.tick();
            session.invariants.calls(Asker::Workflow);
        },
        "a client is called while the link is busy");
    row(
        "request of nobody",
        [](PlayedSession& session) {
            QByteArray body(1, '\0');
            qint32 timeout = 0;
            session.fixture.link.Envia(137, body, timeout);
        },
        "something is written outside the call of a client");
    row(
        "answer that did not come",
        [](PlayedSession& session) {
            while (!session.invariants.isAwaiting())
                session.tick();
            session.fixture.serie.arrive(session.clockAnswers());
            session.runEvents();
        },
        "busy without a request, or idle with one");
    row(
        "general data that were not sent",
        [](PlayedSession& session) {
            session.fixture.globais.GeneralData[100] = 1;
            session.tick();
        },
        "GeneralData is not what was sent");
    row(
        "line in the log",
        [](PlayedSession& session) {
            session.invariants.Rexistra(QStringLiteral("Conexión establecida"), false);
            session.tick();
        },
        "not the lines of the log");
    row(
        "block that the clock does not hold",
        [](PlayedSession& session) {
            sendProgramme(session, 3);
            session.clock = PlayedClock();
            answerNextRequest(session);
            answerNextRequest(session);
        },
        "the clock does not hold the programme that was sent");
}

void TestInvariants::aFaultIsNoticed()
{
    QFETCH(Deed, deed);
    QFETCH(QByteArray, violation);
    PlayedSession session;
    establish(session);
    QCOMPARE(session.invariants.violation(), "");
    deed(session);
    QCOMPARE(QByteArray(session.invariants.violation()), violation);
}

QTEST_GUILESS_MAIN(TestInvariants)
#include "TestInvariants.moc"
