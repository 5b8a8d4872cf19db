#include "FakeSerialPort.h"
#include "FreedBlocks.h"
#include "PortFixture.h"
#include "ProcessMemory.h"
#include "Wipe.h"

#include <QTest>

#include <functional>
#include <memory>

namespace {

constexpr char secret[] = "code 7391 of the card";
/// Without its first and its last character, one of which an emptied buffer replaces by its final
/// 0. Each is one higher.
constexpr const char* raisedRest = "pef!84:2!pg!uif!dbs";

/// The secret, which is nowhere on the heap.
QByteArray literal() { return QByteArray::fromRawData(secret, sizeof secret - 1); }

using Act = std::function<void(FakeSerialPort&)>;

/// A port whose driver takes no byte more, with the secret waiting in the port.
struct FullPort : PortFixture {
    FullPort()
    {
        port.open();
        port.write(QByteArray(100'000, 'x'));
        port.write(literal());
    }
    /// Reads what the port sends, and keeps nothing of it. How much it was.
    qsizetype discardSent() const
    {
        char buffer[4096];
        qsizetype all = 0;
        for (ssize_t count = 0; (count = ::read(line.farEnd(), buffer, sizeof buffer)) > 0;)
            all += count;
        overwrite(buffer, sizeof buffer);
        return all;
    }
};

} // namespace

Q_DECLARE_METATYPE(Act)

/// A modem is sent the codes of the SIM card, and echoes them: they must not stay in memory.
class TestSecretsOfPorts : public QObject {
    Q_OBJECT
private slots:
    void whatHasArrivedIsNowhereAfterwards_data();
    void whatHasArrivedIsNowhereAfterwards();
    void destroyedPortFreesNothingThatHasArrived();
    void bufferOfTheDriversBytesIsFreedWithoutThem();
    void whatWaitsIsNowhereWhenItIsDiscarded();
    void whatWaitsIsNowhereWhenThePortIsClosed();
    void whatWaitedIsNowhereWhenItIsSent();
    void moreToWaitLeavesNoCopyOfWhatWaits();

private:
    FakeClockOfDay m_clock;
};

void TestSecretsOfPorts::whatHasArrivedIsNowhereAfterwards_data()
{
    QTest::addColumn<Act>("act");
    QTest::newRow("cleared") << Act([](FakeSerialPort& port) { port.clearInput(); });
    QTest::newRow("closed") << Act([](FakeSerialPort& port) { port.close(); });
    QTest::newRow("lost") << Act([](FakeSerialPort& port) { port.vanish(); });
    QTest::newRow("dropped from a full buffer") << Act(
        [](FakeSerialPort& port) { port.arrive(QByteArray(SerialPort::inputCapacity, 'x')); });
    QTest::newRow("read byte by byte") << Act([](FakeSerialPort& port) {
        port.setReadLength(1);
        while (port.inputCount() > 0)
            port.read();
    });
}

void TestSecretsOfPorts::whatHasArrivedIsNowhereAfterwards()
{
    QFETCH(Act, act);
    FakeSerialPort port(m_clock);
    port.open();
    port.arrive(literal());
    QVERIFY(ProcessMemory::occurrences(raisedRest) >= 1);
    act(port);
    QCOMPARE(ProcessMemory::occurrences(raisedRest), 0);
}

void TestSecretsOfPorts::destroyedPortFreesNothingThatHasArrived()
{
    auto port = std::make_unique<FakeSerialPort>(m_clock);
    port->open();
    port->arrive(literal());
    const FreedBlocks freed(secret);
    port.reset();
    QCOMPARE(freed.withSecret(), 0);
}

void TestSecretsOfPorts::bufferOfTheDriversBytesIsFreedWithoutThem()
{
    PortFixture f;
    f.port.open();
    const FreedBlocks freed(secret);
    QVERIFY(f.line.send(literal()));
    QTRY_COMPARE(f.port.inputCount(), literal().size());
    QCOMPARE(freed.withSecret(), 0);
}

void TestSecretsOfPorts::whatWaitsIsNowhereWhenItIsDiscarded()
{
    const auto f = std::make_unique<FullPort>();
    QVERIFY(ProcessMemory::occurrences(raisedRest) >= 1);
    f->port.clearOutput();
    QCOMPARE(ProcessMemory::occurrences(raisedRest), 0);
}

void TestSecretsOfPorts::whatWaitsIsNowhereWhenThePortIsClosed()
{
    const auto f = std::make_unique<FullPort>();
    QVERIFY(ProcessMemory::occurrences(raisedRest) >= 1);
    f->port.close();
    QCOMPARE(ProcessMemory::occurrences(raisedRest), 0);
}

void TestSecretsOfPorts::whatWaitedIsNowhereWhenItIsSent()
{
    const auto f = std::make_unique<FullPort>();
    qsizetype sent = 0;
    QTRY_COMPARE(sent += f->discardSent(), 100'000 + literal().size());
    QCOMPARE(ProcessMemory::occurrences(raisedRest), 0);
}

void TestSecretsOfPorts::moreToWaitLeavesNoCopyOfWhatWaits()
{
    const auto f = std::make_unique<FullPort>();
    const FreedBlocks freed(secret);
    f->port.write(QByteArray(1'000'000, 'y'));
    QCOMPARE(freed.withSecret(), 0);
}

QTEST_GUILESS_MAIN(TestSecretsOfPorts)
#include "TestSecretsOfPorts.moc"
