#include "ModemLine.h"

#include <QSignalSpy>
#include <QTest>

using namespace simulator;
using namespace Qt::StringLiterals;

namespace {

/// A modem without echo and delay, and what it has replied.
class Talk {
public:
    Talk()
    {
        modem.setEcho(false);
        modem.setDialDelay(0);
        QObject::connect(&modem, &ModemLine::replied, &modem,
                         [this](const QByteArray& bytes) { m_replies += bytes; });
    }
    QByteArray say(const QByteArray& text)
    {
        m_replies.clear();
        modem.take(text);
        return m_replies;
    }
    QByteArray replies() const { return m_replies; }

    ModemLine modem;

private:
    QByteArray m_replies;
};

} // namespace

class TestModemLine : public QObject {
    Q_OBJECT

private slots:
    void commandIsAnswered_data();
    void commandIsAnswered();
    void echoGivesEveryByteBack();
    void echoIsSwitchedByCommand();
    void emptyLineIsNotAnswered();
    void longLineIsBounded();
    void dialEndsAsTold_data();
    void dialEndsAsTold();
    void dialWithoutNumberOrCardIsAnError();
    void callHandsTheBytesOn();
    void escapeEndsTheCall();
    void farStationHangsUp();
    void droppedLineEndsTheCallWithoutAWord();
    void pinIsWantedAndTaken();
    void threeWrongPinsWantThePuk();
    void pukGivesANewPin();
    void threeWrongPuksLockTheCard();
    void replyCanBeReplaced();
    void silentModemSaysNothing();
    void chatterHasNoEnd();
    void traceNeverShowsThePin();
};

void TestModemLine::commandIsAnswered_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("attention") << QByteArray("AT\r\n") << QByteArray("\r\nOK\r\n");
    QTest::newRow("reset") << QByteArray("ATZ\r\n") << QByteArray("\r\nOK\r\n");
    QTest::newRow("lower case") << QByteArray("atz\r") << QByteArray("\r\nOK\r\n");
    QTest::newRow("several") << QByteArray("AT&F0V1Q0S0=0\r") << QByteArray("\r\nOK\r\n");
    QTest::newRow("signal") << QByteArray("AT+CSQ\r\n")
                            << QByteArray("\r\n+CSQ: 20,0\r\n\r\nOK\r\n");
    QTest::newRow("card") << QByteArray("AT+CPIN?\r\n")
                          << QByteArray("\r\n+CPIN: READY\r\n\r\nOK\r\n");
    QTest::newRow("network") << QByteArray("AT+CREG?\r\n")
                             << QByteArray("\r\n+CREG: 0,1\r\n\r\nOK\r\n");
    QTest::newRow("unknown") << QByteArray("AT+NONE\r\n") << QByteArray("\r\nERROR\r\n");
    QTest::newRow("frame of an earlier try before it")
        << QByteArray("h\x04\x04h\x01\x01\x02\x01\x05\x16"
                      "AT\r\n")
        << QByteArray("\r\nOK\r\n");
    QTest::newRow("no command") << QByteArray("hello\r\n") << QByteArray("\r\nERROR\r\n");
    QTest::newRow("corrected") << QByteArray("ATX1?\b\b4\r") << QByteArray("\r\nOK\r\n");
}

void TestModemLine::commandIsAnswered()
{
    QFETCH(QByteArray, command);
    Talk talk;
    QTEST(talk.say(command), "reply");
}

void TestModemLine::echoGivesEveryByteBack()
{
    Talk talk;
    talk.modem.setEcho(true);
    QCOMPARE(talk.say("ATZ\r\n"), QByteArray("ATZ\r\r\nOK\r\n\n"));
}

void TestModemLine::echoIsSwitchedByCommand()
{
    Talk talk;
    QCOMPARE(talk.say("ATE1\r"), QByteArray("\r\nOK\r\n"));
    QCOMPARE(talk.say("AT\r"), QByteArray("AT\r\r\nOK\r\n"));
    QCOMPARE(talk.say("ATE0\r"), QByteArray("ATE0\r\r\nOK\r\n"));
    QCOMPARE(talk.say("AT\r"), QByteArray("\r\nOK\r\n"));
}

void TestModemLine::emptyLineIsNotAnswered()
{
    Talk talk;
    QCOMPARE(talk.say("\r\n\r\n"), QByteArray());
}

void TestModemLine::longLineIsBounded()
{
    Talk talk;
    QCOMPARE(talk.say(QByteArray(100'000, 'A') + '\r'), QByteArray("\r\nERROR\r\n"));
    QCOMPARE(talk.say("AT\r"), QByteArray("\r\nOK\r\n"));
}

void TestModemLine::dialEndsAsTold_data()
{
    using Dial = ModemLine::Dial;
    QTest::addColumn<int>("dial");
    QTest::addColumn<int>("rate");
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("connect") << int(Dial::Connect) << 0 << QByteArray("\r\nCONNECT\r\n");
    QTest::newRow("rate") << int(Dial::Connect) << 9600 << QByteArray("\r\nCONNECT 9600\r\n");
    QTest::newRow("busy") << int(Dial::Busy) << 0 << QByteArray("\r\nBUSY\r\n");
    QTest::newRow("no carrier") << int(Dial::NoCarrier) << 0 << QByteArray("\r\nNO CARRIER\r\n");
    QTest::newRow("no answer") << int(Dial::NoAnswer) << 0 << QByteArray("\r\nNO ANSWER\r\n");
    QTest::newRow("no dial tone") << int(Dial::NoDialtone) << 0
                                  << QByteArray("\r\nNO DIALTONE\r\n");
    QTest::newRow("error") << int(Dial::Error) << 0 << QByteArray("\r\nERROR\r\n");
}

void TestModemLine::dialEndsAsTold()
{
    QFETCH(int, dial);
    QFETCH(int, rate);
    QFETCH(QByteArray, reply);
    Talk talk;
    talk.modem.setDial(ModemLine::Dial(dial), rate);
    QCOMPARE(talk.say("ATDT 986123456\r\n"), QByteArray());
    QCOMPARE(talk.modem.state(), ModemLine::State::Dialling);
    QTRY_COMPARE(talk.replies(), reply);
    QCOMPARE(talk.modem.isInCall(), reply.contains("CONNECT"));
    QCOMPARE(talk.modem.dialledNumber(), u"986123456"_s);
}

void TestModemLine::dialWithoutNumberOrCardIsAnError()
{
    Talk talk;
    QCOMPARE(talk.say("ATD\r\n"), QByteArray("\r\nERROR\r\n"));
    talk.modem.simCard().setState(SimCard::State::WantsPin);
    QCOMPARE(talk.say("ATD123\r\n"), QByteArray("\r\nERROR\r\n"));
}

void TestModemLine::callHandsTheBytesOn()
{
    Talk talk;
    QSignalSpy data(&talk.modem, &ModemLine::dataArrived);
    talk.say("ATD1\r\n");
    QTRY_VERIFY(talk.modem.isInCall());
    QCOMPARE(talk.say(QByteArray::fromHex("68041a0d")), QByteArray());
    QCOMPARE(data.size(), 1);
    QCOMPARE(data[0][0].toByteArray().toHex(), QByteArray("68041a0d"));
}

void TestModemLine::escapeEndsTheCall()
{
    Talk talk;
    QSignalSpy ended(&talk.modem, &ModemLine::callEnded);
    talk.say("ATD1\r\n");
    QTRY_VERIFY(talk.modem.isInCall());
    QCOMPARE(talk.say("++"), QByteArray());
    QCOMPARE(talk.say("+ATH\r\n"), QByteArray("\r\nOK\r\n"));
    QCOMPARE(ended.size(), 1);
    QCOMPARE(talk.say("AT\r"), QByteArray("\r\nOK\r\n"));
}

void TestModemLine::farStationHangsUp()
{
    Talk talk;
    talk.say("ATD1\r\n");
    QTRY_VERIFY(talk.modem.isInCall());
    talk.say("");
    talk.modem.hangUp();
    QCOMPARE(talk.replies(), QByteArray("\r\nNO CARRIER\r\n"));
    QVERIFY(!talk.modem.isInCall());
}

void TestModemLine::droppedLineEndsTheCallWithoutAWord()
{
    Talk talk;
    talk.say("ATD1\r\n");
    QTRY_VERIFY(talk.modem.isInCall());
    talk.say("");
    talk.modem.dropLine();
    QCOMPARE(talk.replies(), QByteArray());
    QVERIFY(!talk.modem.isInCall());
}

void TestModemLine::pinIsWantedAndTaken()
{
    Talk talk;
    talk.modem.simCard().setState(SimCard::State::WantsPin);
    QCOMPARE(talk.say("AT+CPIN?\r\n"), QByteArray("\r\n+CPIN: SIM PIN\r\n\r\nOK\r\n"));
    QCOMPARE(talk.say("AT+CPIN=1234\r\n"), QByteArray("\r\nOK\r\n"));
    QCOMPARE(talk.say("AT+CPIN?\r\n"), QByteArray("\r\n+CPIN: READY\r\n\r\nOK\r\n"));
    QCOMPARE(talk.say("AT+CPIN=1234\r\n"), QByteArray("\r\nERROR\r\n"));
}

void TestModemLine::threeWrongPinsWantThePuk()
{
    Talk talk;
    talk.modem.simCard().setState(SimCard::State::WantsPin);
    for (int attempt = 0; attempt < 2; ++attempt) {
        QCOMPARE(talk.say("AT+CPIN=0000\r\n"), QByteArray("\r\nERROR\r\n"));
        QCOMPARE(talk.modem.simCard().state(), SimCard::State::WantsPin);
    }
    QCOMPARE(talk.say("AT+CPIN=0000\r\n"), QByteArray("\r\nERROR\r\n"));
    QCOMPARE(talk.say("AT+CPIN?\r\n"), QByteArray("\r\n+CPIN: SIM PUK\r\n\r\nOK\r\n"));
    QCOMPARE(talk.say("AT+CPIN=1234\r\n"), QByteArray("\r\nERROR\r\n"));
}

void TestModemLine::pukGivesANewPin()
{
    Talk talk;
    talk.modem.simCard().setState(SimCard::State::WantsPuk);
    QCOMPARE(talk.say("AT+CPIN=\"12345678\",\"4321\"\r\n"), QByteArray("\r\nOK\r\n"));
    talk.modem.simCard().setState(SimCard::State::WantsPin);
    QCOMPARE(talk.say("AT+CPIN=4321\r\n"), QByteArray("\r\nOK\r\n"));
}

void TestModemLine::threeWrongPuksLockTheCard()
{
    Talk talk;
    talk.modem.simCard().setState(SimCard::State::WantsPuk);
    for (int attempt = 0; attempt < 3; ++attempt)
        QCOMPARE(talk.say("AT+CPIN=00000000,4321\r\n"), QByteArray("\r\nERROR\r\n"));
    QCOMPARE(talk.say("AT+CPIN?\r\n"), QByteArray("\r\nERROR\r\n"));
    QCOMPARE(talk.say("AT+CPIN=12345678,4321\r\n"), QByteArray("\r\nERROR\r\n"));
}

void TestModemLine::replyCanBeReplaced()
{
    Talk talk;
    talk.modem.setReply(u"AT+CSQ"_s, "\r\n+CSQ: many,0\r\nOK\r\n");
    QCOMPARE(talk.say("AT+CSQ\r\n"), QByteArray("\r\n+CSQ: many,0\r\nOK\r\n"));
    talk.modem.setReply(u"AT+CSQ"_s, {});
    QCOMPARE(talk.say("AT+CSQ\r\n"), QByteArray("\r\n+CSQ: 20,0\r\n\r\nOK\r\n"));
}

void TestModemLine::silentModemSaysNothing()
{
    Talk talk;
    talk.modem.setEcho(true);
    talk.modem.setSilent(true);
    QCOMPARE(talk.say("ATZ\r\n"), QByteArray());
}

void TestModemLine::chatterHasNoEnd()
{
    Talk talk;
    talk.modem.setChatter(true);
    QTRY_COMPARE_GE(talk.replies().size(), 50);
    QVERIFY(!talk.replies().contains('\r'));
}

void TestModemLine::traceNeverShowsThePin()
{
    Talk talk;
    talk.modem.setEcho(true);
    talk.modem.simCard().setState(SimCard::State::WantsPin);
    QSignalSpy commanded(&talk.modem, &ModemLine::commanded);
    QSignalSpy answered(&talk.modem, &ModemLine::answered);
    talk.say("AT+CPIN=1234\r\n");
    QCOMPARE(commanded.size(), 1);
    QCOMPARE(commanded[0][0].toString(), u"AT+CPIN=****"_s);
    QCOMPARE(answered.size(), 1);
    QCOMPARE(answered[0][0].toString(), u"OK"_s);
}

QTEST_GUILESS_MAIN(TestModemLine)
#include "TestModemLine.moc"
