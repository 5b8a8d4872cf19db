#include "NetworkFarEnd.h"
#include "NetworkSerialPort.h"

#include <QSignalSpy>

#ifdef Q_OS_LINUX
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

/// An open port at the far end of a network, over sockets of this machine.
class TestNetworkSerialPort : public QObject {
    Q_OBJECT
private slots:
    void rawBytesPassAsTheyAre();
    void rfc2217SetsTheLineBeforeItIsOpen();
    void ffIsSentTwiceAndReadOnce();
    void commandsOfTheFarEndAreNoData();
    void buffersAreClearedHereAndThere();
    void rawBuffersAreClearedHereOnly();
    void linesAreSwitched();
    void rawLinesAreNot();
    void suspendedFlowKeepsTheBytes();
    void clearedOutputIsNotSentWhenFlowResumes();
    void answersMayBeThreeSecondsLate();
    void bytesArriveWhileAReceiverWaits();
    void lastBytesAreDeliveredBeforeTheLoss();
    void lossIsToldOnce();
    void resetIsALoss();
    void withdrawnOptionIsALoss();
    void errorThatTheSocketTellsIsALoss();
    void bytesThatAreToldAgainAreReadOnce();
    void writingDoesNotTellALossItself();
    void closedPortTellsNoLoss();
    void portOpensAgain();
    void closedPortDoesNothing();
    void portMayBeClosedWhileItDelivers();
    void deadFarEndIsNoticed();
    void sixthVersionOfTheProtocolServes();

private:
    /// Makes a port that is open.
    void open(const QString& device, const QByteArray& greeting = NetworkFarEnd::agreement());
    void openRaw() { open(farEnd->raw(), {}); }
    void openRfc2217()
    {
        open(farEnd->rfc2217());
        QVERIFY(farEnd->waitFor(NetworkFarEnd::opening().size()));
        farEnd->takeReceived();
    }
    /// It tells by signals, some of them only on Windows.
    QTcpSocket* socket() const { return port->findChild<QTcpSocket*>(); }
    /// Sends bytes that are there before the event loop runs.
    void sendAtOnce(const QByteArray& bytes)
    {
        farEnd->send(bytes);
        QVERIFY(farEnd->connection()->waitForBytesWritten());
    }
    QByteArray waitForInput(qsizetype count)
    {
        if (!QTest::qWaitFor([&] { return port->inputCount() >= count; }, 30000))
            return "nothing";
        return port->read();
    }

    std::unique_ptr<NetworkFarEnd> farEnd;
    std::unique_ptr<NetworkSerialPort> port;
    int losses = 0;

private slots:
    void init()
    {
        farEnd = std::make_unique<NetworkFarEnd>();
        losses = 0;
    }
    void cleanup()
    {
        port.reset();
        farEnd.reset();
    }
};

void TestNetworkSerialPort::open(const QString& device, const QByteArray& greeting)
{
    farEnd->greeting = greeting;
    port = std::make_unique<NetworkSerialPort>(device);
    NetworkSerialPort& opened = *port;
    connect(&opened, &SerialPort::lost, this, [this] { ++losses; });
    port->open();
    QCOMPARE(port->openError(), QString());
    QVERIFY(port->isOpen());
    QCOMPARE(port->deviceName(), device);
    QVERIFY(QTest::qWaitFor([this] { return farEnd->connection() != nullptr; }));
}

void TestNetworkSerialPort::rawBytesPassAsTheyAre()
{
    openRaw();
    port->write(QByteArray::fromHex("00ff0dff0a"));
    QVERIFY(farEnd->waitFor(5));
    QCOMPARE(farEnd->received.toHex(), QByteArray("00ff0dff0a"));
    farEnd->sendHex("fffd2c00ffff0d");
    QCOMPARE(waitForInput(7).toHex(), QByteArray("fffd2c00ffff0d"));
}

void TestNetworkSerialPort::rfc2217SetsTheLineBeforeItIsOpen()
{
    open(farEnd->rfc2217());
    QVERIFY(farEnd->waitFor(NetworkFarEnd::opening().size()));
    QCOMPARE(farEnd->received.toHex(' '), NetworkFarEnd::opening().toHex(' '));
}

void TestNetworkSerialPort::ffIsSentTwiceAndReadOnce()
{
    openRfc2217();
    port->write(QByteArray::fromHex("68ff00ff"));
    QVERIFY(farEnd->waitFor(6));
    QCOMPARE(farEnd->received.toHex(), QByteArray("68ffff00ffff"));
    farEnd->sendHex("16ffffffff0d");
    QCOMPARE(waitForInput(4).toHex(), QByteArray("16ffff0d"));
}

void TestNetworkSerialPort::commandsOfTheFarEndAreNoData()
{
    openRfc2217();
    farEnd->sendHex("41fffa2c6bb0fff042fffa2c6a60fff0fffd0143fff1");
    QCOMPARE(waitForInput(3), QByteArray("ABC"));
    QVERIFY(farEnd->waitFor(3));
    QCOMPARE(farEnd->received.toHex(), QByteArray("fffc01"));
}

void TestNetworkSerialPort::buffersAreClearedHereAndThere()
{
    openRfc2217();
    farEnd->send("old");
    QVERIFY(QTest::qWaitFor([this] { return port->inputCount() == 3; }));
    port->clearOutput();
    port->clearInput();
    QCOMPARE(port->inputCount(), 0);
    QVERIFY(farEnd->waitFor(14));
    QCOMPARE(farEnd->received.toHex(), QByteArray("fffa2c0c02fff0fffa2c0c01fff0"));
}

void TestNetworkSerialPort::rawBuffersAreClearedHereOnly()
{
    openRaw();
    farEnd->send("old");
    farEnd->connection()->waitForBytesWritten();
    // What has reached the system and not the port is discarded, too.
    port->clearInput();
    port->clearOutput();
    port->write("x");
    QVERIFY(farEnd->waitFor(1));
    QCOMPARE(farEnd->received, QByteArray("x"));
    farEnd->send("new");
    QCOMPARE(waitForInput(3), QByteArray("new"));
}

void TestNetworkSerialPort::linesAreSwitched()
{
    openRfc2217();
    port->setDtrEnabled(true);
    port->setRtsEnabled(true);
    QVERIFY(farEnd->waitFor(28));
    QCOMPARE(farEnd->received.toHex(),
             QByteArray("fffa2c0508fff0fffa2c050cfff0fffa2c0508fff0fffa2c050bfff0"));
}

void TestNetworkSerialPort::rawLinesAreNot()
{
    openRaw();
    port->setDtrEnabled(true);
    port->write("x");
    QVERIFY(farEnd->waitFor(1));
    QCOMPARE(farEnd->received, QByteArray("x"));
}

void TestNetworkSerialPort::suspendedFlowKeepsTheBytes()
{
    openRfc2217();
    farEnd->sendHex("fffa2c6cfff041");
    QCOMPARE(waitForInput(1), QByteArray("A"));
    port->write("first ");
    port->write(QByteArray(NetworkSerialPort::outputCapacity, 'x'));
    port->write("second");
    farEnd->sendHex("42");
    QCOMPARE(waitForInput(1), QByteArray("B"));
    QCOMPARE(farEnd->received, QByteArray());
    farEnd->sendHex("fffa2c6dfff0");
    QVERIFY(farEnd->waitFor(12));
    // What is too much is dropped whole.
    QCOMPARE(farEnd->received, QByteArray("first second"));
}

void TestNetworkSerialPort::clearedOutputIsNotSentWhenFlowResumes()
{
    openRfc2217();
    farEnd->sendHex("fffa2c6cfff041");
    QCOMPARE(waitForInput(1), QByteArray("A"));
    port->write("old");
    port->clearOutput();
    port->write("new");
    farEnd->sendHex("fffa2c6dfff0");
    QVERIFY(farEnd->waitFor(10));
    QCOMPARE(farEnd->received.toHex(), QByteArray("fffa2c0c02fff06e6577"));
}

void TestNetworkSerialPort::answersMayBeThreeSecondsLate()
{
    openRaw();
    QCOMPARE(port->answerAllowance(), std::chrono::seconds(3));
}

void TestNetworkSerialPort::bytesArriveWhileAReceiverWaits()
{
    openRaw();
    port->setReceiveThreshold(1);
    NetworkSerialPort& opened = *port;
    bool isFirst = true;
    bool hasMore = false;
    // As a receiver that has a box open.
    connect(&opened, &SerialPort::received, this, [&] {
        if (!std::exchange(isFirst, false))
            return;
        farEnd->send("more");
        hasMore = QTest::qWaitFor([this] { return port->inputCount() == 5; }, 30000);
    });
    farEnd->send("a");
    QVERIFY(QTest::qWaitFor([&] { return hasMore; }, 30000));
}

void TestNetworkSerialPort::lastBytesAreDeliveredBeforeTheLoss()
{
    openRaw();
    port->setReceiveThreshold(1);
    NetworkSerialPort& opened = *port;
    QByteArray heard;
    connect(&opened, &SerialPort::received, this, [&] { heard += port->read(); });
    const QByteArray last(100000, 'x');
    farEnd->send(last);
    farEnd->hangUp();
    QVERIFY(QTest::qWaitFor([this] { return losses == 1; }, 30000));
    QCOMPARE(heard, last);
}

void TestNetworkSerialPort::lossIsToldOnce()
{
    openRfc2217();
    farEnd->hangUp();
    QVERIFY(QTest::qWaitFor([this] { return losses > 0; }, 30000));
    QVERIFY(!port->isOpen());
    port->write("x");
    port->clearInput();
    QTest::qWait(50);
    QCOMPARE(losses, 1);
}

void TestNetworkSerialPort::resetIsALoss()
{
    openRaw();
    farEnd->connection()->abort();
    QVERIFY(QTest::qWaitFor([this] { return losses > 0; }, 30000));
    QVERIFY(!port->isOpen());
}

void TestNetworkSerialPort::withdrawnOptionIsALoss()
{
    openRfc2217();
    farEnd->sendHex("fffe2c");
    QVERIFY(QTest::qWaitFor([this] { return losses > 0; }, 30000));
    QVERIFY(!port->isOpen());
}

void TestNetworkSerialPort::errorThatTheSocketTellsIsALoss()
{
    openRfc2217();
    QVERIFY(QMetaObject::invokeMethod(
        socket(), "errorOccurred",
        Q_ARG(QAbstractSocket::SocketError, QAbstractSocket::RemoteHostClosedError)));
    port->clearInput();
    QVERIFY(port->isOpen());
    QVERIFY(QTest::qWaitFor([this] { return !port->isOpen(); }, 30000));
    QCOMPARE(losses, 1);
    QVERIFY(QTest::qWaitFor(
        [this] { return farEnd->connection()->state() == QTcpSocket::UnconnectedState; }, 30000));
    QCOMPARE(farEnd->received, QByteArray());
}

void TestNetworkSerialPort::bytesThatAreToldAgainAreReadOnce()
{
    openRaw();
    const auto tell = [this] { QVERIFY(QMetaObject::invokeMethod(socket(), "readyRead")); };
    sendAtOnce("first ");
    tell();
    tell();
    sendAtOnce("second");
    tell();
    tell();
    QCOMPARE(port->inputCount(), 0);
    QCOMPARE(waitForInput(12), QByteArray("first second"));
}

void TestNetworkSerialPort::writingDoesNotTellALossItself()
{
    openRaw();
    // The system knows after the first write that nobody is there, and refuses a later one.
    farEnd->connection()->abort();
    for (int i = 0; i < 100; ++i)
        port->write("x");
    QCOMPARE(losses, 0);
    QVERIFY(port->isOpen());
    QVERIFY(QTest::qWaitFor([this] { return losses > 0; }, 30000));
    QTest::qWait(50);
    QCOMPARE(losses, 1);
}

void TestNetworkSerialPort::closedPortTellsNoLoss()
{
    openRaw();
    port->close();
    QVERIFY(!port->isOpen());
    QTcpSocket& connection = *farEnd->connection();
    QVERIFY(QTest::qWaitFor([&] { return connection.state() == QAbstractSocket::UnconnectedState; },
                            30000));
    QCOMPARE(losses, 0);
}

void TestNetworkSerialPort::portOpensAgain()
{
    openRfc2217();
    farEnd->send("of the first connection");
    port->close();
    port->open();
    QVERIFY(port->isOpen());
    QCOMPARE(farEnd->connections, 2);
    QVERIFY(farEnd->waitFor(NetworkFarEnd::opening().size()));
    farEnd->send("new");
    QCOMPARE(waitForInput(3), QByteArray("new"));
    QCOMPARE(losses, 0);
}

void TestNetworkSerialPort::closedPortDoesNothing()
{
    NetworkSerialPort closed(farEnd->raw());
    closed.write("x");
    closed.clearInput();
    closed.clearOutput();
    closed.setDtrEnabled(true);
    closed.close();
    QVERIFY(!closed.isOpen());
    QCOMPARE(farEnd->connections, 0);
}

void TestNetworkSerialPort::portMayBeClosedWhileItDelivers()
{
    openRfc2217();
    port->setReceiveThreshold(1);
    NetworkSerialPort& opened = *port;
    connect(&opened, &SerialPort::received, this, [this] { port->close(); });
    farEnd->send("x");
    QVERIFY(QTest::qWaitFor([this] { return !port->isOpen(); }, 30000));
    QCOMPARE(losses, 0);
}

void TestNetworkSerialPort::deadFarEndIsNoticed()
{
#ifdef Q_OS_LINUX
    openRaw();
    const auto option = [this](int level, int name) {
        // The port's socket is the one that is connected to the far end.
        for (int descriptor = 3; descriptor < 1024; ++descriptor) {
            sockaddr_in peer{};
            socklen_t size = sizeof peer;
            if (::getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &size) != 0 ||
                ntohs(peer.sin_port) != farEnd->port())
                continue;
            int value = -1;
            size = sizeof value;
            ::getsockopt(descriptor, level, name, &value, &size);
            return value;
        }
        return -2;
    };
    QCOMPARE(option(IPPROTO_TCP, TCP_NODELAY), 1);
    QCOMPARE(option(SOL_SOCKET, SO_KEEPALIVE), 1);
    QCOMPARE(option(IPPROTO_TCP, TCP_KEEPIDLE), 10);
    QCOMPARE(option(IPPROTO_TCP, TCP_KEEPINTVL), 5);
    QCOMPARE(option(IPPROTO_TCP, TCP_KEEPCNT), 3);
    QCOMPARE(option(IPPROTO_TCP, TCP_USER_TIMEOUT), 15000);
#else
    QSKIP("The options of a socket are read as Linux has them");
#endif
}

void TestNetworkSerialPort::sixthVersionOfTheProtocolServes()
{
    farEnd = std::make_unique<NetworkFarEnd>(QHostAddress::LocalHostIPv6);
    if (farEnd->port() == 0)
        QSKIP("This machine has no IPv6");
    open(QStringLiteral("tcp://[::1]:%1").arg(farEnd->port()), {});
    port->write("x");
    QVERIFY(farEnd->waitFor(1));
}

QTEST_GUILESS_MAIN(TestNetworkSerialPort)
#include "TestNetworkSerialPort.moc"
