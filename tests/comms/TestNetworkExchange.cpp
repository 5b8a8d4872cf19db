#include "AnswerReceiver.h"
#include "CommSettings.h"
#include "FakePause.h"
#include "FakeSerialPort.h"
#include "FakeTimer.h"
#include "MessageLink.h"
#include "NetworkFarEnd.h"
#include "NetworkSerialPort.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// An identification with the identification number 1, and its good answer.
const auto* const request = "68040468010102010516";
const auto* const answer = "68040468010802000b16";

class Receiver final : public AnswerReceiver {
public:
    void Recibido(quint8 /*code*/, const QByteArray& /*body*/, LinkStatus status) override
    {
        statuses += qToUnderlying(status);
    }
    QList<int> statuses;
};

} // namespace

/// An exchange of the link with a far end in the network, which the test plays, in virtual time.
class TestNetworkExchange : public QObject {
    Q_OBJECT
private slots:
    void connectionCutAtEachByteOfAnAnswerIsALostPort_data();
    void connectionCutAtEachByteOfAnAnswerIsALostPort();
};

void TestNetworkExchange::connectionCutAtEachByteOfAnAnswerIsALostPort_data()
{
    QTest::addColumn<bool>("isRaw");
    QTest::addColumn<int>("sent");
    for (int sent = 0; sent <= 10; ++sent) {
        QTest::addRow("raw, after %d bytes", sent) << true << sent;
        QTest::addRow("RFC 2217, after %d bytes", sent) << false << sent;
    }
}

void TestNetworkExchange::connectionCutAtEachByteOfAnAnswerIsALostPort()
{
    QFETCH(bool, isRaw);
    QFETCH(int, sent);
    NetworkFarEnd farEnd;
    farEnd.greeting = isRaw ? QByteArray() : NetworkFarEnd::agreement();
    FakeClockOfDay clock;
    FakePause pause{clock};
    FakeTimer timer;
    CommSettings settings;
    NetworkSerialPort port(isRaw ? farEnd.raw() : farEnd.rfc2217());
    FakeSerialPort modem(clock);
    MessageLink link(port, modem, timer, pause, settings);
    QSignalSpy lost(&port, &SerialPort::lost);
    Receiver receiver;
    const auto identify = [&] {
        link.bind(receiver);
        QByteArray body = QByteArray::fromHex("0201");
        qint32 timeout = 0;
        link.Envia(1, body, timeout);
    };

    link.ArrancaConexion(false);
    identify();
    QVERIFY(QTest::qWaitFor([&] { return farEnd.received.endsWith(QByteArray::fromHex(request)); },
                            30000));
    farEnd.send(QByteArray::fromHex(answer).first(sent));
    farEnd.hangUp();
    QVERIFY(lost.wait(30000));
    const bool isWhole = sent == 10;
    QCOMPARE(link.Ocupado(), !isWhole);
    if (!isWhole)
        timer.fire();
    identify();
    QCOMPARE(receiver.statuses, (QList<int>{isWhole ? 0 : 1, 11}));
    QVERIFY(!link.Ocupado());
    QCOMPARE(lost.count(), 1);
}

QTEST_GUILESS_MAIN(TestNetworkExchange)
#include "TestNetworkExchange.moc"
