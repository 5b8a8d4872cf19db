#include "FakeSerialPort.h"
#include "MemoryRegistry.h"
#include "NumberedPort.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The port with a number, whose device is made at each opening. The devices are fakes.
class TestNumberedPort : public QObject {
    Q_OBJECT
private slots:
    void init();
    void deviceIsMadeForTheNameAtEachOpening();
    void deviceGetsNumberSettingsAndLines();
    void failureOfTheDeviceIsThePorts();
    void bytesPassBothWays();
    void readerOfTheDeviceIsThePorts();
    void clearingReachesTheDevice();
    void onlyTheLineThatChangesIsSwitched();
    void closingClosesTheDevice();
    void lossIsToldOnceByThePort();
    void portOpensAnotherDeviceWhenOneIsLost();
    void closedPortDoesNothing();
    void openingOfTheDeviceIsThePorts();
    void closingEndsTheOpeningOfTheDevice();
    void allowanceIsThatOfTheOpenDevice();

private:
    FakeClockOfDay m_clock;
    MemoryRegistry m_registry;
    QString m_device;
    PortNames m_names{
        m_registry,
        [this](const QString& name) { return name == u"HCT_COM3"_s ? m_device : QString(); },
        [] { return QStringList(); }};
    QStringList m_made;
    /// Prepares a device before it is opened.
    std::function<void(FakeSerialPort& device)> m_prepare;
    QPointer<FakeSerialPort> m_fake;
    std::unique_ptr<NumberedPort> m_port;
};

void TestNumberedPort::init()
{
    m_device = u"/dev/ttyUSB7"_s;
    m_made.clear();
    m_prepare = {};
    m_port = std::make_unique<NumberedPort>(m_names, [this](const QString& named) {
        m_made += named;
        auto device = std::make_unique<FakeSerialPort>(m_clock);
        device->device = named;
        if (m_prepare)
            m_prepare(*device);
        m_fake = device.get();
        return device;
    });
    m_port->setPortNumber(3);
}

void TestNumberedPort::deviceIsMadeForTheNameAtEachOpening()
{
    QCOMPARE(m_port->deviceName(), u"/dev/ttyUSB7"_s);
    QCOMPARE(m_made, QStringList());
    m_port->open();
    m_port->open();
    QVERIFY(m_port->isOpen());
    m_device = u"tcp://reloj:4001"_s;
    // As long as the port is open its device remains.
    QCOMPARE(m_port->deviceName(), u"/dev/ttyUSB7"_s);
    m_port->close();
    m_port->open();
    QCOMPARE(m_port->deviceName(), u"tcp://reloj:4001"_s);
    m_port->close();
    m_device.clear();
    m_port->open();
    QCOMPARE(m_made, (QStringList{u"/dev/ttyUSB7"_s, u"tcp://reloj:4001"_s, QString()}));
}

void TestNumberedPort::deviceGetsNumberSettingsAndLines()
{
    m_port->setSettings(u"1200,E,7,2"_s);
    m_port->setDtrEnabled(true);
    m_port->open();
    QCOMPARE(m_fake->portNumber(), 3);
    QCOMPARE(m_fake->settings(), u"1200,E,7,2"_s);
    QVERIFY(m_fake->isDtrEnabled());
    QVERIFY(!m_fake->isRtsEnabled());
}

void TestNumberedPort::failureOfTheDeviceIsThePorts()
{
    m_prepare = [](FakeSerialPort& device) { device.refusal = u"No puede ser."_s; };
    m_port->open();
    QVERIFY(!m_port->isOpen());
    QCOMPARE(m_port->openError(), u"No puede ser."_s);
}

void TestNumberedPort::bytesPassBothWays()
{
    m_port->setReceiveThreshold(3);
    m_port->open();
    QSignalSpy received(m_port.get(), &SerialPort::received);
    m_port->write("request");
    QCOMPARE(m_fake->written(), QByteArray("request"));
    m_fake->arrive("ab");
    QCOMPARE(received.count(), 0);
    m_fake->arrive("c");
    QCOMPARE(received.count(), 1);
    QCOMPARE(m_port->read(), QByteArray("abc"));
    QCOMPARE(m_fake->inputCount(), 0);
}

void TestNumberedPort::readerOfTheDeviceIsThePorts()
{
    m_port->open();
    m_port->setReceiveThreshold(10);
    m_fake->arrive("abc");
    QCOMPARE(m_fake->stillMissing(), 7);
}

void TestNumberedPort::clearingReachesTheDevice()
{
    m_port->open();
    m_fake->arrive("old");
    m_port->clearInput();
    m_port->clearOutput();
    QCOMPARE(m_port->inputCount(), 0);
    QCOMPARE(m_fake->outputClears, 1);
}

void TestNumberedPort::onlyTheLineThatChangesIsSwitched()
{
    m_port->open();
    m_port->setDtrEnabled(true);
    m_port->setDtrEnabled(true);
    m_port->setRtsEnabled(true);
    QCOMPARE(m_fake->lineChanges, (QList<QByteArray>{"DTR=1 RTS=0", "DTR=1 RTS=1"}));
}

void TestNumberedPort::closingClosesTheDevice()
{
    m_port->open();
    QSignalSpy lost(m_port.get(), &SerialPort::lost);
    m_port->close();
    QCOMPARE(m_fake->timesClosed, 1);
    QVERIFY(!m_port->isOpen());
    QCOMPARE(lost.count(), 0);
}

void TestNumberedPort::lossIsToldOnceByThePort()
{
    m_port->open();
    QSignalSpy lost(m_port.get(), &SerialPort::lost);
    m_fake->vanish();
    m_fake->vanish();
    QCOMPARE(lost.count(), 1);
    QVERIFY(!m_port->isOpen());
    QCOMPARE(m_fake->timesClosed, 1);
}

void TestNumberedPort::portOpensAnotherDeviceWhenOneIsLost()
{
    m_port->open();
    NumberedPort& port = *m_port;
    connect(&port, &SerialPort::lost, this, [this] { m_port->open(); });
    const QPointer<FakeSerialPort> first = m_fake;
    m_fake->vanish();
    QVERIFY(m_port->isOpen());
    QVERIFY(m_fake != first);
    QTRY_VERIFY(!first);
}

void TestNumberedPort::closedPortDoesNothing()
{
    m_port->write("x");
    m_port->clearInput();
    m_port->clearOutput();
    m_port->setDtrEnabled(true);
    m_port->close();
    QCOMPARE(m_made, QStringList());
}

void TestNumberedPort::openingOfTheDeviceIsThePorts()
{
    QList<bool> told;
    NumberedPort& port = *m_port;
    connect(&port, &SerialPort::openingChanged, this, [&] { told += m_port->isOpening(); });
    m_prepare = [](FakeSerialPort& device) { device.whileOpening = [] {}; };
    m_port->open();
    QVERIFY(m_port->isOpen());
    QCOMPARE(told, (QList<bool>{true, false}));
}

void TestNumberedPort::closingEndsTheOpeningOfTheDevice()
{
    m_prepare = [this](FakeSerialPort& device) {
        device.whileOpening = [this] { m_port->close(); };
    };
    m_port->open();
    QVERIFY(!m_port->isOpen());
    QCOMPARE(m_port->openError(), QString());
}

void TestNumberedPort::allowanceIsThatOfTheOpenDevice()
{
    m_prepare = [](FakeSerialPort& device) { device.allowance = 3s; };
    QCOMPARE(m_port->answerAllowance(), 0s);
    m_port->open();
    QCOMPARE(m_port->answerAllowance(), 3s);
    m_port->close();
    QCOMPARE(m_port->answerAllowance(), 0s);
}

QTEST_GUILESS_MAIN(TestNumberedPort)
#include "TestNumberedPort.moc"
