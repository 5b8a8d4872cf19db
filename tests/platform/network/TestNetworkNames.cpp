#include "NetworkFarEnd.h"
#include "NetworkSerialPort.h"

#include <QHostInfo>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const QHostAddress& listening()
{
    static const QHostAddress address(u"127.0.0.9"_s);
    return address;
}

const QHostAddress& refusing()
{
    static const QHostAddress address(u"127.0.0.2"_s);
    return address;
}

const QHostAddress& silent()
{
    static const QHostAddress address(u"127.0.0.3"_s);
    return address;
}

NetworkSerialPort::LookUp finding(const QList<QHostAddress>& addresses)
{
    return [addresses](const QString& /*name*/, QObject* context,
                       const NetworkSerialPort::AddressReceiver& found) {
        QHostInfo info;
        info.setAddresses(addresses);
        QTimer::singleShot(0, context, [found, info] { found(info); });
    };
}

/// Nobody accepts here: one connection waits for it, and for more there is no room.
class FullServer {
public:
    explicit FullServer(quint16 port)
    {
        m_server.setListenBacklogSize(0);
        m_isFull = m_server.listen(silent(), port);
        m_server.pauseAccepting();
        m_first.connectToHost(silent(), m_server.serverPort());
        m_isFull = m_isFull && m_first.waitForConnected();
    }
    bool isFull() const { return m_isFull; }
    quint16 port() const { return m_server.serverPort(); }
    void acceptAfter(int milliseconds)
    {
        QTimer::singleShot(milliseconds, &m_server, &QTcpServer::resumeAccepting);
    }

private:
    bool m_isFull = false;
    QTcpServer m_server;
    QTcpSocket m_first;
};

QString deviceAt(quint16 port) { return u"tcp://clock.example:%1"_s.arg(port); }

} // namespace

/// A port at the far end of a network that has a name, with any number of addresses.
class TestNetworkNames : public QObject {
    Q_OBJECT
private slots:
    void silentAddressLeavesTimeForTheNext();
    void refusingAddressIsFollowedByTheNext();
    void addressThatTheSystemRefusesAtOnceIsFollowedByTheNext();
    void timeOfARefusingAddressGoesToTheNext();
    void reasonIsThatOfTheBestAddress_data();
    void reasonIsThatOfTheBestAddress();
    void nameServerThatDoesNotAnswer();
    void nameIsLookedUpAtEachOpening();
    void addressIsNotLookedUp_data();
    void addressIsNotLookedUp();
    void closingEndsTheLookUp();
    void closingEndsTheTrials();
};

void TestNetworkNames::silentAddressLeavesTimeForTheNext()
{
    const NetworkFarEnd farEnd(listening());
    const FullServer full(farEnd.port());
    QVERIFY(full.isFull());
    NetworkSerialPort port(deviceAt(farEnd.port()), finding({silent(), listening()}));
    port.open();
    QCOMPARE(port.openError(), QString());
    QVERIFY(port.isOpen());
}

void TestNetworkNames::refusingAddressIsFollowedByTheNext()
{
    const NetworkFarEnd farEnd(listening());
    NetworkSerialPort port(deviceAt(farEnd.port()), finding({refusing(), listening()}));
    port.open();
    QVERIFY(port.isOpen());
    QCOMPARE(port.openError(), QString());
}

void TestNetworkNames::addressThatTheSystemRefusesAtOnceIsFollowedByTheNext()
{
    const NetworkFarEnd farEnd(listening());
    // No connection leads to a group. The socket tells so before the event loop runs.
    const QHostAddress group(u"224.0.0.1"_s);
    NetworkSerialPort port(deviceAt(farEnd.port()), finding({group, group, listening()}));
    port.open();
    QVERIFY(port.isOpen());
}

void TestNetworkNames::timeOfARefusingAddressGoesToTheNext()
{
    FullServer late(0);
    QVERIFY(late.isFull());
    // More than half of the five seconds: the system asks again after 1 and after 3 s.
    late.acceptAfter(2500);
    NetworkSerialPort port(deviceAt(late.port()), finding({refusing(), silent()}));
    port.open();
    QCOMPARE(port.openError(), QString());
    QVERIFY(port.isOpen());
}

void TestNetworkNames::reasonIsThatOfTheBestAddress_data()
{
    QTest::addColumn<QList<QHostAddress>>("addresses");
    QTest::addColumn<QString>("reason");
    using Addresses = QList<QHostAddress>;
    const QString refused =
        u": conexión rechazada, compruebe la dirección y que el equipo está preparado."_s;
    const QString noAnswer = u" no contesta: compruebe la dirección y la red."_s;
    QTest::newRow("none") << Addresses{} << u": no se encuentra el equipo, compruebe su nombre."_s;
    QTest::newRow("all refuse") << Addresses{refusing(), refusing()} << refused;
    QTest::newRow("first is silent") << Addresses{silent(), refusing()} << noAnswer;
    QTest::newRow("last is silent") << Addresses{refusing(), silent()} << noAnswer;
    QTest::newRow("all are silent") << Addresses{silent(), silent()} << noAnswer;
}

void TestNetworkNames::reasonIsThatOfTheBestAddress()
{
    QFETCH(QList<QHostAddress>, addresses);
    QFETCH(QString, reason);
    const FullServer full(0);
    QVERIFY(full.isFull());
    const QString device = deviceAt(full.port());
    NetworkSerialPort port(device, finding(addresses));
    port.open();
    QCOMPARE(port.openError(), device + reason);
}

void TestNetworkNames::nameServerThatDoesNotAnswer()
{
    NetworkSerialPort port(deviceAt(4001), [](auto&&...) {});
    port.open();
    QCOMPARE(port.openError(),
             u"tcp://clock.example:4001 no contesta: compruebe la dirección y la red."_s);
}

void TestNetworkNames::nameIsLookedUpAtEachOpening()
{
    QStringList names;
    NetworkSerialPort port(deviceAt(4001),
                           [&](const QString& name, QObject* context, const auto& found) {
                               names += name;
                               finding({})(name, context, found);
                           });
    port.open();
    port.open();
    QCOMPARE(names, (QStringList{u"clock.example"_s, u"clock.example"_s}));
}

void TestNetworkNames::addressIsNotLookedUp_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("IPv4") << u"127.0.0.1"_s;
    QTest::newRow("IPv6") << u"[::1]"_s;
}

void TestNetworkNames::addressIsNotLookedUp()
{
    QFETCH(QString, address);
    bool isLookedUp = false;
    NetworkSerialPort port(u"tcp://%1:1"_s.arg(address), [&](auto&&...) { isLookedUp = true; });
    port.open();
    QVERIFY(!isLookedUp);
}

void TestNetworkNames::closingEndsTheLookUp()
{
    const NetworkFarEnd farEnd(listening());
    NetworkSerialPort port(deviceAt(farEnd.port()),
                           [&](const QString& /*name*/, QObject* context, const auto& found) {
                               QTimer::singleShot(0, context, [&port, found] {
                                   port.close();
                                   QHostInfo info;
                                   info.setAddresses({listening()});
                                   found(info);
                               });
                           });
    port.open();
    QVERIFY(!port.isOpen());
    QCOMPARE(port.openError(), QString());
    QVERIFY(!port.findChild<QTcpSocket*>());
}

void TestNetworkNames::closingEndsTheTrials()
{
    const FullServer full(0);
    QVERIFY(full.isFull());
    NetworkSerialPort port(deviceAt(full.port()), finding({refusing(), silent(), silent()}));
    QTimer::singleShot(100, &port, &SerialPort::close);
    port.open();
    QVERIFY(!port.isOpen());
    QCOMPARE(port.openError(), QString());
}

QTEST_GUILESS_MAIN(TestNetworkNames)
#include "TestNetworkNames.moc"
