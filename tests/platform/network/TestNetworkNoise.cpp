#include "HeapInUse.h"
#include "NetworkFarEnd.h"
#include "NetworkSerialPort.h"

#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <functional>

namespace {

constexpr qsizetype pieceSize = 65536;
/// What is sent at least. The buffers of the system hold a small part of it.
constexpr qsizetype noiseSize = 240 * pieceSize;
constexpr int patience = 60000;
/// How much the heap may grow: the socket of the far end, too, buffers what it sends.
constexpr std::size_t mostGrowth = std::size_t{2} * 1024 * 1024;

/// Sends the piece over and over, noiseSize at least, until `isEnough`, which is asked whenever
/// some of it has left.
bool sendAll(QTcpSocket& sender, const QByteArray& piece, const std::function<bool()>& isEnough)
{
    qsizetype left = noiseSize;
    bool hasEnded = false;
    QEventLoop loop;
    QObject::connect(&sender, &QTcpSocket::bytesWritten, &loop, [&] {
        hasEnded = isEnough() && left <= 0;
        if (hasEnded && sender.bytesToWrite() == 0)
            loop.quit();
        for (; !hasEnded && sender.bytesToWrite() < pieceSize; left -= piece.size())
            sender.write(piece);
    });
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    sender.write(piece);
    loop.exec();
    return hasEnded;
}

} // namespace

/// A far end that sends without end, or takes nothing: the port stays within its bounds, and the
/// event loop runs.
class TestNetworkNoise : public QObject {
    Q_OBJECT
private slots:
    void noiseFillsNoMemory_data();
    void noiseFillsNoMemory();
    void noiseDuringTheOpeningEndsWithIt();
    void clearingTheInputDoesNotWaitForTheEndOfNoise();
    void farEndThatTakesNothingFillsNoMemory_data();
    void farEndThatTakesNothingFillsNoMemory();
};

void TestNetworkNoise::noiseFillsNoMemory_data()
{
    QTest::addColumn<QByteArray>("pattern");
    QTest::newRow("bytes") << QByteArray("0123456789abcdef");
    QTest::newRow("doubled bytes") << QByteArray::fromHex("ffff");
    QTest::newRow("requests of an option") << QByteArray::fromHex("fffd01fffb01");
    QTest::newRow("changes of an option") << QByteArray::fromHex("fffd18fffe18fffb18fffc18");
    QTest::newRow("subnegotiation without end") << QByteArray("v");
    QTest::newRow("suspension and resumption") << QByteArray::fromHex("fffa2c6cfff0fffa2c6dfff0");
}

void TestNetworkNoise::noiseFillsNoMemory()
{
    QFETCH(QByteArray, pattern);
    NetworkFarEnd farEnd;
    farEnd.greeting = NetworkFarEnd::agreement();
    NetworkSerialPort port(farEnd.rfc2217());
    port.setReceiveThreshold(1);
    port.open();
    QVERIFY(port.isOpen());
    QVERIFY(farEnd.waitFor(NetworkFarEnd::opening().size()));
    farEnd.takeReceived();

    int ticks = 0;
    QTimer tick;
    connect(&tick, &QTimer::timeout, this, [&ticks] { ++ticks; });
    tick.start(1);
    const QByteArray piece = pattern.repeated(pieceSize / pattern.size());
    if (pattern == "v")
        farEnd.sendHex("fffa2c");
    const auto before = heapInUse();
    qsizetype mostInput = 0;
    // Other events of the loop get their turn.
    QVERIFY(sendAll(*farEnd.connection(), piece, [&] {
        mostInput = std::max(mostInput, port.inputCount());
        return ticks > 10;
    }));
    QVERIFY(mostInput <= SerialPort::inputCapacity);
    if (before)
        QVERIFY(heapInUse().value() < before.value() + mostGrowth);
    // The answers: an option is refused once in each direction.
    QVERIFY(farEnd.received.size() <= 6);
    QVERIFY(port.isOpen());
}

void TestNetworkNoise::noiseDuringTheOpeningEndsWithIt()
{
    NetworkFarEnd farEnd;
    farEnd.greeting = QByteArray::fromHex("fffa2c") + QByteArray(pieceSize, 'v');
    NetworkSerialPort port(farEnd.rfc2217());
    QTimer more;
    connect(&more, &QTimer::timeout, this, [&farEnd] {
        if (farEnd.connection() && farEnd.connection()->bytesToWrite() < pieceSize)
            farEnd.send(QByteArray(pieceSize, 'v'));
    });
    more.start(0);
    port.open();
    QCOMPARE(port.openError(), farEnd.rfc2217() + QStringLiteral(" no admite RFC 2217."));
}

void TestNetworkNoise::clearingTheInputDoesNotWaitForTheEndOfNoise()
{
    NetworkFarEnd farEnd;
    NetworkSerialPort port(farEnd.raw());
    port.open();
    QVERIFY(QTest::qWaitFor([&] { return farEnd.connection() != nullptr; }));
    // A sender of its own thread never pauses.
    std::atomic<bool> isOver = false;
    auto* sender = farEnd.connection();
    QThread thread;
    sender->setParent(nullptr);
    sender->moveToThread(&thread);
    connect(&thread, &QThread::started, sender, [&isOver, sender] {
        const QByteArray piece(pieceSize, 'x');
        while (!isOver) {
            sender->write(piece);
            sender->waitForBytesWritten(100);
        }
        sender->moveToThread(QCoreApplication::instance()->thread());
        QThread::currentThread()->quit();
    });
    thread.start();
    for (int i = 0; i < 100; ++i)
        port.clearInput();
    QVERIFY(port.isOpen());
    isOver = true;
    QVERIFY(thread.wait(30000));
}

void TestNetworkNoise::farEndThatTakesNothingFillsNoMemory_data()
{
    QTest::addColumn<bool>("isRaw");
    QTest::newRow("raw") << true;
    QTest::newRow("RFC 2217") << false;
}

void TestNetworkNoise::farEndThatTakesNothingFillsNoMemory()
{
    QFETCH(bool, isRaw);
    NetworkFarEnd farEnd;
    farEnd.greeting = isRaw ? QByteArray() : NetworkFarEnd::agreement();
    NetworkSerialPort port(isRaw ? farEnd.raw() : farEnd.rfc2217());
    port.open();
    QVERIFY(QTest::qWaitFor([&] { return farEnd.connection() != nullptr; }));
    farEnd.connection()->setReadBufferSize(1);
    farEnd.connection()->disconnect(&farEnd);
    const auto before = heapInUse();
    const QByteArray piece(pieceSize / 4, '\xff');
    for (int i = 0; i < 2000; ++i) {
        port.clearOutput();
        port.clearInput();
        port.write(piece);
    }
    if (before)
        QVERIFY(heapInUse().value() < before.value() + mostGrowth);
    QVERIFY(port.isOpen());
}

QTEST_GUILESS_MAIN(TestNetworkNoise)
#include "TestNetworkNoise.moc"
