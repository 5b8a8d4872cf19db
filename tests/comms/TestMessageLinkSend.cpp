#include "Answer.h"
#include "Exchange.h"
#include "LinkFixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TestMessageLinkSend : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void requestWithoutDataGoesOutAsTheTableSays();
    void pauseOfFourMillisecondsComesBeforeTheFrame();
    void identificationWaitsFiftyMillisecondsAfterItsFirstByte();
    void everyFurtherRequestCarriesTheToggleBit();
    void identificationInvertsTheToggleWithoutCarryingIt();
    void toggleIsNotResetBetweenConnections();
    void longBodyIsCutToFiveHundredAndNineBytesInTheCallersArray();
    void bodyOfFiveHundredAndNineBytesIsLeftAlone();
    void buffersAreEmptiedBeforeTheFrame();
    void closedPortAnswersElevenAtOnceAndChangesNothing();
    void sendMakesTheLinkBusy();
    void stationOfTheSettingsIsReadAtEverySend();

    void computedTimeOutIsWrittenBack_data();
    void computedTimeOutIsWrittenBack();
    void computedTimeOutOverTheModem();
    void timerIsArmedWithTheLowFifteenBits_data();
    void timerIsArmedWithTheLowFifteenBits();
    void timeOutOf40000WaitsTwiceSevenThousand();
    void timeOutOf32768NeverEnds();

private:
    void send(quint8 code, QByteArray body = {}, qint32 timeout = 0);

    std::unique_ptr<LinkFixture> m_fixture;
};

void TestMessageLinkSend::init()
{
    m_fixture = std::make_unique<LinkFixture>();
    m_fixture->link.ArrancaConexion(false);
}

void TestMessageLinkSend::cleanup() { m_fixture.reset(); }

void TestMessageLinkSend::send(quint8 code, QByteArray body, qint32 timeout)
{
    m_fixture->link.Envia(code, body, timeout);
}

void TestMessageLinkSend::requestWithoutDataGoesOutAsTheTableSays()
{
    send(1);
    m_fixture->serie.takeWritten();
    send(5);
    QCOMPARE(m_fixture->serie.takeWritten(), QByteArray::fromHex("6802026801050616"));
}

void TestMessageLinkSend::pauseOfFourMillisecondsComesBeforeTheFrame()
{
    const QTime begin = m_fixture->clock.now().time();
    send(5);
    QCOMPARE(m_fixture->pause.waits, (QList<FakePause::Entry>{{4ms, false}}));
    QCOMPARE(m_fixture->serie.writes.first().bytes, QByteArray::fromHex("68"));
    QCOMPARE(begin.msecsTo(m_fixture->serie.writes.first().time), 4);
    QCOMPARE(begin.msecsTo(m_fixture->serie.writes.last().time), 4);
}

void TestMessageLinkSend::identificationWaitsFiftyMillisecondsAfterItsFirstByte()
{
    const QTime begin = m_fixture->clock.now().time();
    send(1, QByteArray::fromHex("0201"));
    QCOMPARE(m_fixture->pause.waits, (QList<FakePause::Entry>{{4ms, false}, {50ms, false}}));
    QCOMPARE(m_fixture->serie.writes.at(0).bytes, QByteArray::fromHex("68"));
    QCOMPARE(begin.msecsTo(m_fixture->serie.writes.at(0).time), 4);
    QCOMPARE(begin.msecsTo(m_fixture->serie.writes.at(1).time), 54);
    QCOMPARE(m_fixture->serie.written(), QByteArray::fromHex("68040468010102010516"));
}

void TestMessageLinkSend::everyFurtherRequestCarriesTheToggleBit()
{
    send(5);
    QCOMPARE(m_fixture->serie.takeWritten(), QByteArray::fromHex("6802026801151616"));
    send(5);
    QCOMPARE(m_fixture->serie.takeWritten(), QByteArray::fromHex("6802026801050616"));
    send(5);
    QCOMPARE(m_fixture->serie.takeWritten(), QByteArray::fromHex("6802026801151616"));
}

void TestMessageLinkSend::identificationInvertsTheToggleWithoutCarryingIt()
{
    send(1);
    QCOMPARE(m_fixture->serie.takeWritten(), QByteArray::fromHex("6802026801010216"));
    send(1);
    QCOMPARE(m_fixture->serie.takeWritten(), QByteArray::fromHex("6802026801010216"));
    send(1);
    m_fixture->serie.takeWritten();
    send(5);
    QCOMPARE(m_fixture->serie.takeWritten(), QByteArray::fromHex("6802026801050616"));
}

void TestMessageLinkSend::toggleIsNotResetBetweenConnections()
{
    send(5);
    m_fixture->link.RemataConexion();
    m_fixture->link.ArrancaConexion(false);
    m_fixture->serie.takeWritten();
    send(5);
    QCOMPARE(m_fixture->serie.takeWritten(), QByteArray::fromHex("6802026801050616"));
}

void TestMessageLinkSend::longBodyIsCutToFiveHundredAndNineBytesInTheCallersArray()
{
    QByteArray body(508, 'a');
    body += 'b';
    body += QByteArray(91, 'c');
    qint32 timeout = 0;
    m_fixture->link.Envia(5, body, timeout);
    QCOMPARE(body, QByteArray(508, 'a') + 'b');
    const QByteArray written = m_fixture->serie.takeWritten();
    QCOMPARE(written.size(), 517);
    QCOMPARE(written.left(6), QByteArray::fromHex("48ffff480115"));
    QCOMPARE(written.mid(6, 509), QByteArray(508, 'a') + 'b');
}

void TestMessageLinkSend::bodyOfFiveHundredAndNineBytesIsLeftAlone()
{
    QByteArray body(509, 'a');
    qint32 timeout = 0;
    m_fixture->link.Envia(5, body, timeout);
    QCOMPARE(body.size(), 509);
    QCOMPARE(m_fixture->serie.takeWritten().size(), 517);
}

void TestMessageLinkSend::buffersAreEmptiedBeforeTheFrame()
{
    m_fixture->serie.arrive("late words");
    send(5);
    QCOMPARE(m_fixture->serie.inputCount(), 0);
    QCOMPARE(m_fixture->serie.outputClears, 1);
    QCOMPARE(m_fixture->serie.receiveThreshold(), 1);
}

void TestMessageLinkSend::closedPortAnswersElevenAtOnceAndChangesNothing()
{
    m_fixture->serie.close();
    Exchange exchange;
    QList<QByteArray> bodies;
    QList<int> facts;
    exchange.bind(m_fixture->link, isAnyAnswer,
                  [&](quint8 code, const QByteArray& body, LinkStatus status) {
                      facts << code << qToUnderlying(status);
                      bodies << body;
                  });
    QByteArray body = QByteArray::fromHex("0102") + QByteArray(600, 'x');
    qint32 timeout = 0;
    m_fixture->link.Envia(137, body, timeout);
    QCOMPARE(facts, (QList<int>{137, 11}));
    QCOMPARE(bodies, QList<QByteArray>{body});
    QCOMPARE(body.size(), 602);
    QCOMPARE(timeout, 0);
    QVERIFY(!m_fixture->link.Ocupado());
    QCOMPARE(m_fixture->link.state(), LinkState::Idle);
    QVERIFY(m_fixture->serie.writes.isEmpty());
    QVERIFY(m_fixture->pause.waits.isEmpty());

    // The toggle bit was not inverted either.
    m_fixture->link.ArrancaConexion(false);
    send(5);
    QCOMPARE(m_fixture->serie.takeWritten(), QByteArray::fromHex("6802026801151616"));
}

void TestMessageLinkSend::sendMakesTheLinkBusy()
{
    QVERIFY(!m_fixture->link.Ocupado());
    send(5);
    QVERIFY(m_fixture->link.Ocupado());
    QCOMPARE(m_fixture->link.state(), LinkState::HeaderHunt);
    QVERIFY(m_fixture->tmrTemporizador.isRunning());
}

void TestMessageLinkSend::stationOfTheSettingsIsReadAtEverySend()
{
    m_fixture->settings.station = u"200"_s;
    QCOMPARE(m_fixture->link.estacion(), quint8(200));
    send(1);
    QCOMPARE(m_fixture->serie.takeWritten(), QByteArray::fromHex("68020268c801c916"));
    m_fixture->settings.station = u"300"_s;
    send(1);
    QCOMPARE(m_fixture->serie.takeWritten(), QByteArray::fromHex("6802026800010116"));
}

void TestMessageLinkSend::computedTimeOutIsWrittenBack_data()
{
    QTest::addColumn<QString>("speed");
    QTest::addColumn<int>("timeout");
    QTest::newRow("9600") << u"9600"_s << 800;
    QTest::newRow("1200") << u"1200"_s << 5000;
    QTest::newRow("256000, division without fraction") << u"256000"_s << 222;
    QTest::newRow("110, more than one period") << u"110"_s << 52563;
    QTest::newRow("empty counts as 9600") << QString() << 800;
    QTest::newRow("0 counts as 9600") << u"0"_s << 800;
    QTest::newRow("nonsense counts as 9600") << u"N/A"_s << 800;
    QTest::newRow("1, however slow") << u"1"_s << 5760200;
}

void TestMessageLinkSend::computedTimeOutIsWrittenBack()
{
    QFETCH(QString, speed);
    m_fixture->settings.directSpeed = speed;
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(5, body, timeout);
    QTEST(timeout, "timeout");
}

void TestMessageLinkSend::computedTimeOutOverTheModem()
{
    m_fixture->link.ArrancaConexion(true);
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(5, body, timeout);
    QCOMPARE(timeout, 4600);
    QCOMPARE(m_fixture->tmrTemporizador.interval(), 4600ms);
    QCOMPARE(m_fixture->modem.takeWritten(), QByteArray::fromHex("6802026801151616"));
}

void TestMessageLinkSend::timerIsArmedWithTheLowFifteenBits_data()
{
    QTest::addColumn<int>("timeout");
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("ticks");
    QTest::newRow("1500") << 1500 << 1500 << 1;
    QTest::newRow("32767") << 32767 << 32767 << 1;
    QTest::newRow("32769") << 32769 << 1 << 2;
    QTest::newRow("40000") << 40000 << 7232 << 2;
    QTest::newRow("64000") << 64000 << 31232 << 2;
    QTest::newRow("100000") << 100000 << 1696 << 4;
    QTest::newRow("-1") << -1 << 32767 << 1;
}

void TestMessageLinkSend::timerIsArmedWithTheLowFifteenBits()
{
    QFETCH(int, timeout);
    QFETCH(int, ticks);
    send(5, {}, timeout);
    QTEST(static_cast<int>(m_fixture->tmrTemporizador.interval().count()), "interval");
    for (int tick = 1; tick < ticks; ++tick) {
        QVERIFY(m_fixture->tmrTemporizador.fire());
        QVERIFY(m_fixture->link.Ocupado());
    }
    QVERIFY(m_fixture->tmrTemporizador.fire());
    QVERIFY(!m_fixture->link.Ocupado());
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
}

void TestMessageLinkSend::timeOutOf40000WaitsTwiceSevenThousand()
{
    QByteArray body;
    qint32 timeout = 40000;
    m_fixture->link.Envia(5, body, timeout);
    QCOMPARE(timeout, 40000);
    QCOMPARE(m_fixture->tmrTemporizador.interval(), 7232ms);
    QVERIFY(m_fixture->tmrTemporizador.fire());
    QVERIFY(m_fixture->link.Ocupado());
    QVERIFY(m_fixture->tmrTemporizador.fire());
    QVERIFY(!m_fixture->link.Ocupado());
}

void TestMessageLinkSend::timeOutOf32768NeverEnds()
{
    send(5, {}, 32768);
    QCOMPARE(m_fixture->tmrTemporizador.interval(), 0ms);
    QVERIFY(!m_fixture->tmrTemporizador.isRunning());
    QVERIFY(m_fixture->link.Ocupado());
}

QTEST_GUILESS_MAIN(TestMessageLinkSend)
#include "TestMessageLinkSend.moc"
