#include "Answer.h"
#include "Exchange.h"
#include "LinkFixture.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestMessageLinkReceive : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void goodAnswerIsDelivered();
    void answerWithoutDataIsDelivered();
    void answerSplitAtEveryByteIsDelivered();
    void portIsToldHowManyBytesAreToCome();
    void longAnswerIsDelivered();
    void answerOfEveryLengthByteIsDeliveredWhole_data();
    void answerOfEveryLengthByteIsDeliveredWhole();
    void shortStartWithLengthOneIsNoHeader();
    void longStartWithLengthOneIsAHeader();
    void noiseBeforeTheAnswerIsDropped();
    void answerFromForeignStationIsIgnored();
    void station255AcceptsAnyStation();
    void wrongChecksumIsDeliveredAsFour();
    void checksumTakesTheStationAsReceived();
    void wrongEndByteIsNotNoticed();
    void secondFrameInTheSameChunkWaitsForNobody();
    void linkIsBusyUntilTheHandlerHasReturned();
    void timeOutDeliversWhatHasArrived();
    void timeOutInMidFrameDeliversTheRestOfIt();
    void timeOutCarriesTheCodeOfTheFrameReceivedLast();
    void lateAnswerAfterATimeOutReachesNobody();
    void lateAnswerIsDroppedByTheNextRequest();
    void requestSentFromTheHandlerIsNotDisturbed();
    void requestSentFromATimeOutHandlerIsNotDisturbed();
    void connectionEndedFromTheHandlerStaysEnded();
    void answerReachesOnlyTheExchangeBoundLast();
    void exchangeIsReleasedBeforeItsHandlerRuns();
    void exchangeThatIsAskedAgainFromItsHandlerIsAnswered();
    void answerThatIsNotOneToTheRequestIsDeliveredAsEight();
    void answerOfABadStatusIsNotJudged();
    void handlerMayDestroyItsExchange();
    void exchangeDestroyedWhileWaitingHearsNothing();
    void exchangeOutlivesTheLink();
    void vanishedPortIsAClosedPort();
    void vanishedPortInMidRequestStillTimesOut();
    void timeOutOfAVanishedPortCarriesTheFrameReceivedLast();
    void vanishedPortIsTold();

private:
    void request(Exchange& exchange, quint8 code = 5, qint32 timeout = 0);

    struct Answer {
        int code;
        QByteArray body;
        int status;
        bool operator==(const Answer&) const = default;
    };
    std::unique_ptr<LinkFixture> m_fixture;
    QList<Answer> m_answers;
    Exchange m_exchange;
};

void TestMessageLinkReceive::init()
{
    m_fixture = std::make_unique<LinkFixture>();
    m_fixture->link.ArrancaConexion(false);
}

void TestMessageLinkReceive::cleanup()
{
    m_exchange.release();
    m_answers.clear();
    m_fixture.reset();
}

void TestMessageLinkReceive::request(Exchange& exchange, quint8 code, qint32 timeout)
{
    exchange.bind(m_fixture->link, isAnyAnswer,
                  [this](quint8 answered, const QByteArray& body, LinkStatus status) {
                      m_answers.append({answered, body, qToUnderlying(status)});
                  });
    QByteArray body;
    m_fixture->link.Envia(code, body, timeout);
}

void TestMessageLinkReceive::goodAnswerIsDelivered()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("6805056801080201000c16"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray::fromHex("020100"), 0}}));
    QVERIFY(!m_fixture->link.Ocupado());
    QCOMPARE(m_fixture->link.state(), LinkState::Idle);
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
    QCOMPARE(m_fixture->serie.receiveThreshold(), 0);
}

void TestMessageLinkReceive::answerWithoutDataIsDelivered()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("68020268010809"
                                                "16"
                                                "aabb"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray(), 0}}));
}

void TestMessageLinkReceive::answerSplitAtEveryByteIsDelivered()
{
    request(m_exchange);
    m_fixture->serie.arriveBytewise(QByteArray::fromHex("680505680108020100"
                                                        "0c"));
    QVERIFY(m_answers.isEmpty());
    QCOMPARE(m_fixture->link.state(), LinkState::Body);
    m_fixture->serie.arrive(QByteArray::fromHex("16"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray::fromHex("020100"), 0}}));
}

void TestMessageLinkReceive::portIsToldHowManyBytesAreToCome()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("68"));
    QCOMPARE(m_fixture->serie.stillMissing(), 7);
    m_fixture->serie.arrive(QByteArray::fromHex("0505"));
    QCOMPARE(m_fixture->serie.stillMissing(), 5);
    m_fixture->serie.arrive(QByteArray::fromHex("6801"));
    QCOMPARE(m_fixture->serie.stillMissing(), 6);
}

void TestMessageLinkReceive::longAnswerIsDelivered()
{
    request(m_exchange);
    m_fixture->serie.arrive(LinkFixture::frame(1, 8, QByteArray(509, 'z')));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray(509, 'z'), 0}}));
}

void TestMessageLinkReceive::answerOfEveryLengthByteIsDeliveredWhole_data()
{
    QTest::addColumn<int>("first");
    QTest::newRow("short start") << 0;
    QTest::newRow("long start") << 254;
}

void TestMessageLinkReceive::answerOfEveryLengthByteIsDeliveredWhole()
{
    QFETCH(int, first);
    for (int size = first; size < first + 256 && size <= 509; ++size) {
        m_answers.clear();
        request(m_exchange);
        m_fixture->serie.arrive(LinkFixture::frame(1, 8, QByteArray(size, 'k')));
        QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray(size, 'k'), 0}}));
    }
}

void TestMessageLinkReceive::shortStartWithLengthOneIsNoHeader()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("6801016801"));
    QCOMPARE(m_fixture->link.state(), LinkState::HeaderHunt);
    m_fixture->timeOut();
    QCOMPARE(m_answers.first().status, 1);
}

void TestMessageLinkReceive::longStartWithLengthOneIsAHeader()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("4801014801"));
    QCOMPARE(m_fixture->link.state(), LinkState::Body);
    QCOMPARE(m_fixture->serie.receiveThreshold(), 258);
    m_fixture->serie.arrive(QByteArray(1, 8) + QByteArray(255, 0) + QByteArray::fromHex("0916"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray(255, 0), 0}}));
}

void TestMessageLinkReceive::noiseBeforeTheAnswerIsDropped()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("ff6868680202"
                                                "6802026801080916"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray(), 0}}));
}

void TestMessageLinkReceive::answerFromForeignStationIsIgnored()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("6802026802080a16"));
    QVERIFY(m_answers.isEmpty());
    QVERIFY(m_fixture->link.Ocupado());
    m_fixture->timeOut();
    QCOMPARE(m_answers, (QList<Answer>{{0, QByteArray(), 1}}));
}

void TestMessageLinkReceive::station255AcceptsAnyStation()
{
    m_fixture->settings.station = u"255"_s;
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("6802026802080a16"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray(), 0}}));
}

void TestMessageLinkReceive::wrongChecksumIsDeliveredAsFour()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("6805056801080201000d16"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray::fromHex("020100"), 4}}));
    QVERIFY(!m_fixture->link.Ocupado());
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("6802026801080916"));
    QCOMPARE(m_answers.last(), (Answer{8, QByteArray(), 0}));
}

void TestMessageLinkReceive::checksumTakesTheStationAsReceived()
{
    m_fixture->settings.station = u"255"_s;
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("6802026802080716"));
    QCOMPARE(m_answers.first().status, 4);
}

void TestMessageLinkReceive::wrongEndByteIsNotNoticed()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("68050568010802010"
                                                "00c99"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray::fromHex("020100"), 0}}));
}

void TestMessageLinkReceive::secondFrameInTheSameChunkWaitsForNobody()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("6803036801080109"
                                                "16"
                                                "680303680108020a16"));
    QCOMPARE(m_answers.size(), 1);
    m_fixture->serie.arrive("more");
    QCOMPARE(m_answers.size(), 1);

    request(m_exchange);
    QCOMPARE(m_fixture->serie.inputCount(), 0);
    QCOMPARE(m_answers.size(), 1);
}

void TestMessageLinkReceive::linkIsBusyUntilTheHandlerHasReturned()
{
    bool busy = false;
    m_exchange.bind(m_fixture->link, isAnyAnswer, [&](quint8, const QByteArray&, LinkStatus) {
        busy = m_fixture->link.Ocupado();
    });
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(5, body, timeout);
    m_fixture->serie.arrive(QByteArray::fromHex("6802026801080916"));
    QVERIFY(busy);
    QVERIFY(!m_fixture->link.Ocupado());
}

void TestMessageLinkReceive::timeOutDeliversWhatHasArrived()
{
    request(m_exchange);
    m_fixture->serie.setReceiveThreshold(1000);
    m_fixture->serie.arrive(QByteArray::fromHex("680505"));
    m_fixture->timeOut();
    QCOMPARE(m_answers, (QList<Answer>{{0, QByteArray::fromHex("680505"), 1}}));
    QCOMPARE(m_fixture->link.state(), LinkState::Idle);
}

void TestMessageLinkReceive::timeOutInMidFrameDeliversTheRestOfIt()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("68050568010802"));
    m_fixture->timeOut();
    QCOMPARE(m_answers, (QList<Answer>{{0, QByteArray::fromHex("0802"), 1}}));
    QVERIFY(!m_fixture->link.Ocupado());
}

void TestMessageLinkReceive::timeOutCarriesTheCodeOfTheFrameReceivedLast()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("6802026801777816"));
    request(m_exchange);
    m_fixture->timeOut();
    QCOMPARE(m_answers.last(), (Answer{0x77, QByteArray(), 1}));
}

void TestMessageLinkReceive::lateAnswerAfterATimeOutReachesNobody()
{
    request(m_exchange);
    m_fixture->timeOut();
    m_answers.clear();
    Exchange next;
    next.bind(m_fixture->link, isAnyAnswer,
              [&](quint8, const QByteArray&, LinkStatus) { QFAIL("not asked yet"); });
    m_fixture->serie.arrive(QByteArray::fromHex("6802026801080916"));
    QVERIFY(m_answers.isEmpty());
    QVERIFY(!m_fixture->link.Ocupado());
}

void TestMessageLinkReceive::lateAnswerIsDroppedByTheNextRequest()
{
    request(m_exchange);
    m_fixture->timeOut();
    m_fixture->serie.arrive(QByteArray::fromHex("680303680108010a16"));
    m_answers.clear();
    request(m_exchange);
    QVERIFY(m_answers.isEmpty());
    m_fixture->serie.arrive(QByteArray::fromHex("680303680108020b16"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray::fromHex("02"), 0}}));
}

void TestMessageLinkReceive::requestSentFromTheHandlerIsNotDisturbed()
{
    Exchange second;
    m_exchange.bind(m_fixture->link, isAnyAnswer,
                    [&](quint8, const QByteArray&, LinkStatus) { request(second); });
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(5, body, timeout);
    m_fixture->serie.arrive(QByteArray::fromHex("6802026801080916"));
    QVERIFY(m_fixture->link.Ocupado());
    QCOMPARE(m_fixture->link.state(), LinkState::HeaderHunt);
    m_fixture->serie.arrive(QByteArray::fromHex("680303680108020b16"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray::fromHex("02"), 0}}));
    QVERIFY(!m_fixture->link.Ocupado());
}

void TestMessageLinkReceive::requestSentFromATimeOutHandlerIsNotDisturbed()
{
    Exchange second;
    m_exchange.bind(m_fixture->link, isAnyAnswer,
                    [&](quint8, const QByteArray&, LinkStatus) { request(second); });
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(5, body, timeout);
    QVERIFY(m_fixture->tmrTemporizador.fire());
    QVERIFY(m_fixture->link.Ocupado());
    QVERIFY(m_fixture->tmrTemporizador.isRunning());
    QCOMPARE(m_fixture->link.state(), LinkState::HeaderHunt);
}

void TestMessageLinkReceive::connectionEndedFromTheHandlerStaysEnded()
{
    m_exchange.bind(m_fixture->link, isAnyAnswer, [&](quint8, const QByteArray&, LinkStatus) {
        m_fixture->link.RemataConexion();
    });
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(5, body, timeout);
    m_fixture->serie.arrive(QByteArray::fromHex("6802026801080916"));
    QVERIFY(!m_fixture->link.Ocupado());
    QVERIFY(!m_fixture->serie.isOpen());
    QCOMPARE(m_fixture->link.state(), LinkState::Idle);
}

void TestMessageLinkReceive::answerReachesOnlyTheExchangeBoundLast()
{
    Exchange older;
    older.bind(m_fixture->link, isAnyAnswer,
               [](quint8, const QByteArray&, LinkStatus) { QFAIL("replaced"); });
    request(m_exchange);
    QVERIFY(!older.isBound());
    QVERIFY(m_exchange.isBound());
    m_fixture->serie.arrive(QByteArray::fromHex("6802026801080916"));
    QCOMPARE(m_answers.size(), 1);
    QVERIFY(!m_exchange.isBound());
}

void TestMessageLinkReceive::exchangeIsReleasedBeforeItsHandlerRuns()
{
    bool bound = true;
    m_exchange.request(
        m_fixture->link, 5, {}, isAnyAnswer,
        [&](quint8, const QByteArray&, LinkStatus) { bound = m_exchange.isBound(); });
    QVERIFY(m_exchange.isBound());
    m_fixture->serie.arrive(QByteArray::fromHex("6802026801080916"));
    QVERIFY(!bound);
}

void TestMessageLinkReceive::exchangeThatIsAskedAgainFromItsHandlerIsAnswered()
{
    m_exchange.request(m_fixture->link, 5, {}, isAnyAnswer,
                       [&](quint8, const QByteArray&, LinkStatus) { request(m_exchange); });
    m_fixture->serie.arrive(QByteArray::fromHex("680303680108010a16"));
    QVERIFY(m_exchange.isBound());
    m_fixture->serie.arrive(QByteArray::fromHex("680303680108020b16"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray::fromHex("02"), 0}}));
}

void TestMessageLinkReceive::answerThatIsNotOneToTheRequestIsDeliveredAsEight()
{
    QList<int> statuses;
    for (const char* answer :
         {"68040468010802000b16", "68040468010802010c16", "68040468010803000c16"}) {
        m_exchange.request(m_fixture->link, 5, {}, std::bind_front(isAccepted, quint8(2)),
                           [&](quint8, const QByteArray&, LinkStatus status) {
                               statuses << qToUnderlying(status);
                           });
        m_fixture->serie.arrive(QByteArray::fromHex(answer));
    }
    QCOMPARE(statuses, (QList<int>{0, 8, 8}));
}

void TestMessageLinkReceive::answerOfABadStatusIsNotJudged()
{
    int judged = 0;
    const auto isGood = [&](quint8, const QByteArray&) { return ++judged < 0; };
    m_exchange.request(m_fixture->link, 5, {}, isGood,
                       [&](quint8 code, const QByteArray& body, LinkStatus status) {
                           m_answers.append({code, body, qToUnderlying(status)});
                       });
    m_fixture->serie.arrive(QByteArray::fromHex("6802026801080a16"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray(), 4}}));
    QCOMPARE(judged, 0);
}

void TestMessageLinkReceive::handlerMayDestroyItsExchange()
{
    auto exchange = std::make_unique<Exchange>();
    exchange->bind(m_fixture->link, isAnyAnswer,
                   [&](quint8 code, const QByteArray& body, LinkStatus status) {
                       exchange.reset();
                       m_answers.append({code, body, qToUnderlying(status)});
                   });
    QByteArray body;
    qint32 timeout = 0;
    m_fixture->link.Envia(5, body, timeout);
    m_fixture->serie.arrive(QByteArray::fromHex("680303680108020b16"));
    QCOMPARE(m_answers, (QList<Answer>{{8, QByteArray::fromHex("02"), 0}}));
}

void TestMessageLinkReceive::exchangeDestroyedWhileWaitingHearsNothing()
{
    {
        Exchange gone;
        request(gone);
    }
    m_fixture->serie.arrive(QByteArray::fromHex("6802026801080916"));
    QVERIFY(m_answers.isEmpty());
    QVERIFY(!m_fixture->link.Ocupado());
}

void TestMessageLinkReceive::exchangeOutlivesTheLink()
{
    request(m_exchange);
    m_fixture.reset();
    QVERIFY(!m_exchange.isBound());
    m_exchange.release();
}

void TestMessageLinkReceive::vanishedPortIsAClosedPort()
{
    m_fixture->serie.vanish();
    request(m_exchange, 137);
    QCOMPARE(m_answers, (QList<Answer>{{137, QByteArray(), 11}}));
    m_answers.clear();
    m_fixture->link.ArrancaConexion(false);
    request(m_exchange, 137);
    QVERIFY(m_fixture->link.Ocupado());
}

void TestMessageLinkReceive::vanishedPortInMidRequestStillTimesOut()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("680505"));
    m_fixture->serie.vanish();
    QVERIFY(m_fixture->link.Ocupado());
    m_fixture->timeOut();
    QCOMPARE(m_answers, (QList<Answer>{{0, QByteArray(), 1}}));
    QVERIFY(!m_fixture->link.Ocupado());
}

void TestMessageLinkReceive::timeOutOfAVanishedPortCarriesTheFrameReceivedLast()
{
    request(m_exchange);
    m_fixture->serie.arrive(QByteArray::fromHex("680505680108020100"
                                                "0c16"));
    request(m_exchange);
    m_fixture->serie.vanish();
    m_fixture->timeOut();
    QCOMPARE(m_answers.last(), (Answer{8, QByteArray::fromHex("020100"), 1}));
}

void TestMessageLinkReceive::vanishedPortIsTold()
{
    QStringList told;
    connect(&m_fixture->link, &MessageLink::VisualizaPorto, this,
            [&](const QString& text, const QString& toolTip) { told << text << toolTip; });
    m_fixture->serie.vanish();
    QCOMPARE(told, (QStringList{u"COM1,9600,N,8,1"_s, u"Se ha perdido el puerto /dev/fake"_s}));
}

QTEST_GUILESS_MAIN(TestMessageLinkReceive)
#include "TestMessageLinkReceive.moc"
