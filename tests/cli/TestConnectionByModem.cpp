#include "Connection.h"
#include "World.h"

#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// How an attempt by modem ends. The test plays the modem and the clock.
class TestConnectionByModem : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void portThatDoesNotOpenIsTold();
    void clockThatIsReachedIsTold();
    void clockThatDoesNotAnswerIsCalledOnce();
    void clockThatRefusesTheNumberIsTold();
    void damagedAnswersAreTold();
    void portThatIsLostInTheCallIsTold();
    void endOfTheConnectionAfterAFailureIsNotTold();

private:
    /// Dials; the modem is ready and the call is taken.
    void call();
    /// The session asks, and the clock answers so, or not at all.
    void answer(const QByteArray& body);
    void timeOut();
    /// "status: reason" of each failure.
    QStringList failures();

    std::unique_ptr<World> m_world;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<Connection> m_connection;
    QStringList m_failures;
    int m_established = 0;
};

void TestConnectionByModem::init()
{
    m_failures.clear();
    m_established = 0;
    m_world = std::make_unique<World>();
    m_session = std::make_unique<Session>(m_world->environment(), m_world->log);
    m_connection = std::make_unique<Connection>(*m_session, u"600123456"_s, 3600s);
    Connection& connection = *m_connection;
    connect(&connection, &Connection::established, this, [this] { ++m_established; });
    connect(&connection, &Connection::failed, this,
            [this](ExitStatus status, const QString& reason) {
                m_failures += u"%1: %2"_s.arg(qToUnderlying(status)).arg(reason);
            });
}

void TestConnectionByModem::cleanup()
{
    m_connection.reset();
    m_session.reset();
    m_world.reset();
}

void TestConnectionByModem::call()
{
    // Dialling lets events run.
    QTimer::singleShot(0, this, [this] {
        m_world->modem.arrive("\r\nOK\r\n");
        QTimer::singleShot(0, this, [this] { m_world->modem.arrive("\r\nCONNECT 9600\r\n"); });
    });
    m_connection->open();
    QCOMPARE(m_world->modem.takeWritten(), QByteArray("ATZ\r\nATD600123456\r\n"));
}

void TestConnectionByModem::answer(const QByteArray& body)
{
    m_world->nextRequest();
    m_world->modem.arrive(LinkFixture::frame(1, 8, body));
}

void TestConnectionByModem::timeOut()
{
    m_world->nextRequest();
    QVERIFY(m_world->tmrTemporizador.fire());
}

QStringList TestConnectionByModem::failures()
{
    // The end is told in the event loop, in two steps.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    return m_failures;
}

void TestConnectionByModem::portThatDoesNotOpenIsTold()
{
    m_world->modem.refusal = u"No existe COM1."_s;
    m_connection->open();
    QCOMPARE(
        failures(),
        QStringList{u"3: No existe COM1. El puerto y la línea del módem se eligen con hct."_s});
}

void TestConnectionByModem::clockThatIsReachedIsTold()
{
    call();
    answer(QByteArray::fromHex("0200"));
    answer(LinkFixture::fullBlock());
    QCOMPARE(m_established, 1);
    QCOMPARE(failures(), QStringList());
}

void TestConnectionByModem::clockThatDoesNotAnswerIsCalledOnce()
{
    call();
    for (int attempt = 0; attempt < 4; ++attempt)
        timeOut();
    QCOMPARE(failures(), QStringList{u"4: Nadie contesta a la llamada: compruebe el número, la "
                                     "cobertura y que el reloj tiene corriente."_s});
    QCOMPARE(m_world->modem.timesOpened, 1);
}

void TestConnectionByModem::clockThatRefusesTheNumberIsTold()
{
    call();
    for (int attempt = 0; attempt < 4; ++attempt)
        answer(QByteArray::fromHex("0201"));
    QCOMPARE(failures(), QStringList{u"1: El reloj no acepta el número de identificación 1: "
                                     "indique el suyo con --identification."_s});
}

void TestConnectionByModem::damagedAnswersAreTold()
{
    call();
    for (int attempt = 0; attempt < 4; ++attempt) {
        m_world->nextRequest();
        m_world->modem.arrive(LinkFixture::frame(1, 8, QByteArray::fromHex("0200"), 1));
    }
    QCOMPARE(failures(), QStringList{u"4: Las respuestas llegan dañadas por /dev/fake: compruebe "
                                     "el cable y la velocidad."_s});
}

void TestConnectionByModem::endOfTheConnectionAfterAFailureIsNotTold()
{
    call();
    m_world->modem.vanish();
    m_session->workflow().Desconectar();
    QCOMPARE(failures().size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(m_failures.size(), 1);
}

void TestConnectionByModem::portThatIsLostInTheCallIsTold()
{
    call();
    m_world->modem.vanish();
    QCOMPARE(failures(),
             QStringList{u"3: Se ha perdido el puerto /dev/fake: compruebe que el adaptador está "
                         "conectado y repita la orden."_s});
}

QTEST_GUILESS_MAIN(TestConnectionByModem)
#include "TestConnectionByModem.moc"
