#include "FakeSerialPort.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// What all ports have in common: buffer, threshold, read length, lines, open and lost.
class TestSerialPort : public QObject {
    Q_OBJECT

private slots:
    void eventComesAtTheThreshold_data();
    void eventComesAtTheThreshold();
    void eventComesAgainForEachArrivalWhileBytesWait();
    void thresholdRaisedInTheHandlerHolds();
    void readTakesTheReadLength_data();
    void readTakesTheReadLength();
    void clearedInputIsEmpty();
    void fullBufferDropsTheOldest();
    void closingForgetsWhatHasArrived();
    void nothingArrivesAtAClosedPort();
    void deliveryOfNothingIsNotTold();
    void linesChangeAtOnceOnAnOpenPortOnly();
    void failedOpeningTellsWhyAndStaysClosed();
    void openingAnOpenPortChangesNothing();
    void lossClosesFirstAndIsToldOnce();

private:
    FakeClockOfDay m_clock;
};

void TestSerialPort::eventComesAtTheThreshold_data()
{
    QTest::addColumn<int>("threshold");
    QTest::addColumn<int>("arrived");
    QTest::addColumn<int>("events");
    QTest::newRow("0 is silent") << 0 << 5 << 0;
    QTest::newRow("1, one byte") << 1 << 1 << 1;
    QTest::newRow("3, two bytes") << 3 << 2 << 0;
    QTest::newRow("3, three bytes") << 3 << 3 << 1;
    QTest::newRow("3, four bytes") << 3 << 4 << 2;
}

void TestSerialPort::eventComesAtTheThreshold()
{
    QFETCH(int, threshold);
    QFETCH(int, arrived);
    FakeSerialPort port(m_clock);
    port.open();
    port.setReceiveThreshold(threshold);
    QSignalSpy received(&port, &SerialPort::received);
    port.arriveBytewise(QByteArray(arrived, 'x'));
    QTEST(static_cast<int>(received.count()), "events");
    QCOMPARE(port.inputCount(), arrived);
}

void TestSerialPort::eventComesAgainForEachArrivalWhileBytesWait()
{
    FakeSerialPort port(m_clock);
    port.open();
    port.setReceiveThreshold(1);
    QSignalSpy received(&port, &SerialPort::received);
    port.arrive("abc");
    port.arrive("de");
    QCOMPARE(received.count(), 2);
    QCOMPARE(port.read(), "abcde");
}

void TestSerialPort::thresholdRaisedInTheHandlerHolds()
{
    FakeSerialPort port(m_clock);
    port.open();
    port.setReceiveThreshold(1);
    int events = 0;
    connect(&port, &SerialPort::received, this, [&] {
        ++events;
        port.setReceiveThreshold(4);
    });
    port.arriveBytewise("abc");
    QCOMPARE(events, 1);
    port.arriveBytewise("d");
    QCOMPARE(events, 2);
}

void TestSerialPort::readTakesTheReadLength_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<int>("left");
    QTest::newRow("0 takes all") << 0 << QByteArray("abcde") << 0;
    QTest::newRow("1") << 1 << QByteArray("a") << 4;
    QTest::newRow("all there are") << 5 << QByteArray("abcde") << 0;
    QTest::newRow("more than there are") << 9 << QByteArray("abcde") << 0;
}

void TestSerialPort::readTakesTheReadLength()
{
    QFETCH(int, length);
    FakeSerialPort port(m_clock);
    port.open();
    port.arrive("abcde");
    port.setReadLength(length);
    QTEST(port.read(), "first");
    QTEST(static_cast<int>(port.inputCount()), "left");
}

void TestSerialPort::clearedInputIsEmpty()
{
    FakeSerialPort port(m_clock);
    port.open();
    port.arrive("old");
    port.clearInput();
    QCOMPARE(port.inputCount(), 0);
    QCOMPARE(port.read(), "");
}

void TestSerialPort::fullBufferDropsTheOldest()
{
    FakeSerialPort port(m_clock);
    port.open();
    port.arrive("old" + QByteArray(65535, 'x'));
    port.arrive("new");
    QCOMPARE(port.inputCount(), 65536);
    port.setReadLength(65533);
    QCOMPARE(port.read(), QByteArray(65533, 'x'));
    QCOMPARE(port.read(), "new");
}

void TestSerialPort::closingForgetsWhatHasArrived()
{
    FakeSerialPort port(m_clock);
    port.open();
    port.arrive("old");
    port.close();
    port.open();
    QCOMPARE(port.inputCount(), 0);
}

void TestSerialPort::nothingArrivesAtAClosedPort()
{
    FakeSerialPort port(m_clock);
    port.setReceiveThreshold(1);
    QSignalSpy received(&port, &SerialPort::received);
    port.arrive("late");
    QCOMPARE(received.count(), 0);
    QCOMPARE(port.inputCount(), 0);
}

void TestSerialPort::deliveryOfNothingIsNotTold()
{
    FakeSerialPort port(m_clock);
    port.open();
    port.setReceiveThreshold(1);
    port.arrive("x");
    QSignalSpy received(&port, &SerialPort::received);
    port.arrive("");
    QCOMPARE(received.count(), 0);
}

void TestSerialPort::linesChangeAtOnceOnAnOpenPortOnly()
{
    FakeSerialPort port(m_clock);
    port.setDtrEnabled(true);
    QVERIFY(port.lineChanges.isEmpty());
    port.open();
    port.setRtsEnabled(true);
    port.setDtrEnabled(false);
    QCOMPARE(port.lineChanges, (QList<QByteArray>{"DTR=1 RTS=1", "DTR=0 RTS=1"}));
}

void TestSerialPort::failedOpeningTellsWhyAndStaysClosed()
{
    FakeSerialPort port(m_clock);
    port.refusal = u"ocupado"_s;
    port.open();
    QVERIFY(!port.isOpen());
    QCOMPARE(port.openError(), u"ocupado"_s);
    port.refusal.clear();
    port.open();
    QVERIFY(port.isOpen());
    QCOMPARE(port.openError(), QString());
}

void TestSerialPort::openingAnOpenPortChangesNothing()
{
    FakeSerialPort port(m_clock);
    port.open();
    port.arrive("kept");
    port.open();
    QCOMPARE(port.timesOpened, 1);
    QCOMPARE(port.read(), "kept");
}

void TestSerialPort::lossClosesFirstAndIsToldOnce()
{
    FakeSerialPort port(m_clock);
    port.open();
    port.arrive("old");
    QSignalSpy lost(&port, &SerialPort::lost);
    connect(&port, &SerialPort::lost, this, [&] {
        QVERIFY(!port.isOpen());
        QCOMPARE(port.inputCount(), 0);
    });
    port.vanish();
    port.vanish();
    QCOMPARE(lost.count(), 1);
    QCOMPARE(port.timesClosed, 1);
}

QTEST_GUILESS_MAIN(TestSerialPort)
#include "TestSerialPort.moc"
