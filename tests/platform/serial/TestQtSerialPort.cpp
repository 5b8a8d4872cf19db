#include "PortFixture.h"
#include "SystemTickTimer.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <chrono>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QByteArray allByteValues()
{
    QByteArray bytes;
    for (int value = 0; value < 256; ++value)
        bytes.append(static_cast<char>(value));
    return bytes;
}

/// Counts how often devices wake the program.
class WakeUpCounter : public QObject {
public:
    WakeUpCounter() { QCoreApplication::instance()->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::SockAct)
            ++count;
        return false;
    }
    int count = 0;
};

/// How often bytes wake the program that arrive one by one while events run: 99 times when the
/// device is watched all the time.
int wakeUpsOf99Bytes(PseudoTerminal& line)
{
    const WakeUpCounter wakeUps;
    for (int byte = 0; byte < 99; ++byte) {
        if (!line.send("x") || !line.waitUntilWithDriver(1))
            return -1;
        QCoreApplication::processEvents();
    }
    return wakeUps.count;
}

/// An open port and the tick timer of the program.
struct PortAndTick : PortFixture {
    PortAndTick()
    {
        port.open();
        port.setReceiveThreshold(1);
    }
    /// Processes events once, when both the tick and a single byte are due. `work` is done in the
    /// tick.
    void letATickMeetALoneByte(const std::function<void()>& work)
    {
        const auto connection = QObject::connect(tick.get(), &TickTimer::wake, &port, work);
        QVERIFY(line.send("\x55"));
        QVERIFY(line.waitUntilWithDriver(1));
        tick->setEnabled(true);
        tick->wakeAt(tick->now() + 1);
        QThread::msleep(2);
        QCoreApplication::processEvents();
        tick->setEnabled(false);
        QObject::disconnect(connection);
    }

    std::unique_ptr<TickTimer> tick = makeTickTimer();
    QSignalSpy lost{&port, &SerialPort::lost};
};

/// A port of 110 bit/s that awaits 400 bytes, on a line that takes no time for them.
struct FastLine : PortFixture {
    FastLine()
    {
        port.setSettings(QStringLiteral("110,N,8,1"));
        port.open();
        port.setReceiveThreshold(400);
    }
    /// All but one byte of an answer, which should take half a minute.
    void answerFaster()
    {
        port.write("request");
        QVERIFY(line.send(QByteArray(399, 'x')));
        QTRY_COMPARE(port.inputCount(), 399);
    }
};

/// The order of tick and port depends on the toolkit, and in part on the numbers of their
/// descriptors, so this many pairs are tried.
constexpr int pairs = 20;

} // namespace

/// Bytes through an open port.
class TestQtSerialPort : public QObject {
    Q_OBJECT
private slots:
    void allByteValuesPassBothWays();
    void writtenBytesAreWithTheDriverOnReturn();
    void bytesWrittenTogetherArriveInOrder();
    void clearingReachesTheDriver();
    void clearingTheInputDiscardsWhatTheDriverHolds();
    void byteClearedAfterItsAnnouncementIsNoReasonToClose();
    void byteThatAnotherProgramTookIsNoReasonToClose();
    void fullDriverIsNoReasonToClose();
    void bytesArriveWhileTheHandlerOfEarlierOnesRunsEvents();
    void awaitedBytesDoNotWakeTheProgramOneByOne();
    void restOfAnAnswerArrivesAfterTheRest();
    void newRequestIsNotKeptFromItsAnswerByTheRest();
    void bytesThatTheReaderNeedsDoNotWakeTheProgramOneByOne();
    void bytesFasterThanTheLineLetNoRestFollow();
    void openingForgetsThatBytesWereFasterThanTheLine();
    void bytesOfALateAnswerAreNotFasterThanTheLine();
};

void TestQtSerialPort::allByteValuesPassBothWays()
{
    PortFixture f;
    f.port.open();
    QVERIFY2(f.port.isOpen(), qPrintable(f.port.openError()));
    QCOMPARE(f.port.deviceName(), f.line.device);

    f.port.write(allByteValues());
    QCOMPARE(f.line.received(), allByteValues());

    QVERIFY(f.line.send(allByteValues()));
    QTRY_COMPARE(f.port.inputCount(), 256);
    QCOMPARE(f.port.read(), allByteValues());
}

void TestQtSerialPort::writtenBytesAreWithTheDriverOnReturn()
{
    PortFixture f;
    f.port.open();

    // No event runs in between: the gap after the first byte of a frame depends on it.
    f.port.write("\x68");
    QCOMPARE(f.line.received(), "\x68");
    f.port.write("\x16");
    QCOMPARE(f.line.received(), "\x16");
}

void TestQtSerialPort::bytesWrittenTogetherArriveInOrder()
{
    PortFixture f;
    f.port.open();

    f.port.write("one");
    f.port.write("two");
    f.port.write("");
    f.port.write("three");
    QCOMPARE(f.line.received(), "onetwothree");
    QCoreApplication::processEvents();
    QCOMPARE(f.line.received(), "");
}

void TestQtSerialPort::clearingReachesTheDriver()
{
    PortFixture f;
    f.port.open();
    f.line.takeFlushes();

    f.port.clearOutput();
    QCOMPARE(f.line.takeFlushes(), TIOCPKT_FLUSHWRITE);
    f.port.clearInput();
    QCOMPARE(f.line.takeFlushes(), TIOCPKT_FLUSHREAD);
}

void TestQtSerialPort::clearingTheInputDiscardsWhatTheDriverHolds()
{
    PortFixture f;
    f.port.open();
    f.port.setReceiveThreshold(1);

    QVERIFY(f.line.send("first"));
    QTRY_COMPARE(f.port.inputCount(), 5);
    QVERIFY(f.line.send("second"));
    QVERIFY(f.line.waitUntilWithDriver(6));
    f.port.clearInput();
    QCOMPARE(f.port.inputCount(), 0);

    QVERIFY(f.line.send("answer"));
    QTRY_COMPARE(f.port.inputCount(), 6);
    QCOMPARE(f.port.read(), "answer");
}

void TestQtSerialPort::byteClearedAfterItsAnnouncementIsNoReasonToClose()
{
    for (int pair = 0; pair < pairs; ++pair) {
        PortAndTick f;
        f.letATickMeetALoneByte([&f] { f.port.clearInput(); });
        QCOMPARE(f.lost.count(), 0);
        f.port.clearInput();

        QVERIFY(f.line.send("answer"));
        QTRY_COMPARE(f.port.inputCount(), 6);
    }
}

void TestQtSerialPort::byteThatAnotherProgramTookIsNoReasonToClose()
{
    for (int pair = 0; pair < pairs; ++pair) {
        PortAndTick f;
        f.letATickMeetALoneByte([&f] { f.line.discardWithDriver(); });
        QCOMPARE(f.lost.count(), 0);
        f.port.clearInput();

        QVERIFY(f.line.send("answer"));
        QTRY_COMPARE(f.port.inputCount(), 6);
    }
}

void TestQtSerialPort::fullDriverIsNoReasonToClose()
{
    PortFixture f;
    QSignalSpy lost(&f.port, &SerialPort::lost);
    f.port.open();

    // Far more than a driver buffers while nobody reads.
    const qsizetype much = 2'000'000;
    f.port.write(QByteArray(much, 'x'));
    f.port.write(QByteArray(much, 'x'));
    QCoreApplication::processEvents();
    QVERIFY(f.port.isOpen());
    QCOMPARE(lost.count(), 0);

    // What waited in the program has been discarded.
    f.port.clearOutput();
    QByteArray heard = f.line.received();
    f.port.write("new");
    QTRY_VERIFY((heard += f.line.received()).endsWith("new"));
    QVERIFY(heard.size() < much);
}

void TestQtSerialPort::bytesArriveWhileTheHandlerOfEarlierOnesRunsEvents()
{
    PortFixture f;
    f.port.open();
    f.port.setReceiveThreshold(1);
    // As when the handler of an answer opens a box.
    bool cameMeanwhile = false;
    connect(
        &f.port, &SerialPort::received, this,
        [&] {
            f.port.read();
            f.line.send("second");
            cameMeanwhile = QTest::qWaitFor([&] { return f.port.inputCount() == 6; });
        },
        Qt::SingleShotConnection);

    QVERIFY(f.line.send("first"));
    QTRY_VERIFY(cameMeanwhile);
}

void TestQtSerialPort::awaitedBytesDoNotWakeTheProgramOneByOne()
{
    PortFixture f;
    f.port.setSettings(u"110,N,8,1"_s);
    f.port.open();
    f.port.setReceiveThreshold(100);
    QSignalSpy received(&f.port, &SerialPort::received);

    const int wakeUps = wakeUpsOf99Bytes(f.line);
    QVERIFY2(wakeUps >= 0 && wakeUps < 99, QByteArray::number(wakeUps));
    QCOMPARE(received.count(), 0);

    QVERIFY(f.line.send("y"));
    QTRY_COMPARE(received.count(), 1);
    QCOMPARE(f.port.read(), QByteArray(99, 'x') + "y");
}

void TestQtSerialPort::restOfAnAnswerArrivesAfterTheRest()
{
    PortFixture f;
    f.port.open();
    f.port.setReceiveThreshold(1);
    QSignalSpy received(&f.port, &SerialPort::received);
    connect(&f.port, &SerialPort::received, this, [&] { f.port.setReceiveThreshold(200); });

    QVERIFY(f.line.send("header"));
    QTRY_COMPARE(received.count(), 1);
    QVERIFY(f.line.send(QByteArray(193, 'x')));
    QVERIFY(f.line.waitUntilWithDriver(193));
    QVERIFY(f.line.send("y"));
    QTRY_COMPARE(received.count(), 2);
    QCOMPARE(f.port.read(), "header" + QByteArray(193, 'x') + "y");
}

void TestQtSerialPort::newRequestIsNotKeptFromItsAnswerByTheRest()
{
    PortFixture f;
    f.port.open();
    f.port.setReceiveThreshold(500);
    QVERIFY(f.line.send("partial"));
    QTRY_COMPARE(f.port.inputCount(), 7);

    f.port.clearInput();
    f.port.setReceiveThreshold(1);
    QSignalSpy received(&f.port, &SerialPort::received);
    QVERIFY(f.line.send("answer"));
    QVERIFY(f.line.waitUntilWithDriver(6));
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QCOMPARE(received.count(), 1);
    QCOMPARE(f.port.read(), "answer");
}

void TestQtSerialPort::bytesThatTheReaderNeedsDoNotWakeTheProgramOneByOne()
{
    PortFixture f;
    f.port.setSettings(u"110,N,8,1"_s);
    f.port.open();
    f.port.setReceiveThreshold(1);
    connect(&f.port, &SerialPort::received, this,
            [&f] { f.port.awaitBytes(static_cast<int>(100 - f.port.inputCount())); });

    const int wakeUps = wakeUpsOf99Bytes(f.line);
    QVERIFY2(wakeUps >= 0 && wakeUps < 99, QByteArray::number(wakeUps));
    QTRY_COMPARE(f.port.inputCount(), 99);
}

void TestQtSerialPort::bytesFasterThanTheLineLetNoRestFollow()
{
    FastLine f;
    QSignalSpy received(&f.port, &SerialPort::received);
    f.answerFaster();
    QVERIFY(f.line.send("y"));
    QVERIFY(f.line.waitUntilWithDriver(1));
    QCoreApplication::processEvents();
    QCOMPARE(received.count(), 1);
}

void TestQtSerialPort::openingForgetsThatBytesWereFasterThanTheLine()
{
    FastLine f;
    f.answerFaster();
    f.port.close();
    f.port.open();
    const int wakeUps = wakeUpsOf99Bytes(f.line);
    QVERIFY2(wakeUps >= 0 && wakeUps < 99, QByteArray::number(wakeUps));
}

void TestQtSerialPort::bytesOfALateAnswerAreNotFasterThanTheLine()
{
    PortFixture f;
    f.port.setSettings(u"110,N,8,1"_s);
    f.port.open();
    f.port.setReceiveThreshold(400);
    // Of an answer to the request before, between clearInput and the next request.
    QVERIFY(f.line.send("late"));
    QVERIFY(f.line.waitUntilWithDriver(4));
    f.port.write("request");
    QTRY_COMPARE(f.port.inputCount(), 4);

    const int wakeUps = wakeUpsOf99Bytes(f.line);
    QVERIFY2(wakeUps >= 0 && wakeUps < 99, QByteArray::number(wakeUps));
}

QTEST_GUILESS_MAIN(TestQtSerialPort)
#include "TestQtSerialPort.moc"
