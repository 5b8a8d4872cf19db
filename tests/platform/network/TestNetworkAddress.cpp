#include "NetworkAddress.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestNetworkAddress : public QObject {
    Q_OBJECT
private slots:
    void addressIsRead_data();
    void addressIsRead();
    void otherTextIsNone_data();
    void otherTextIsNone();
    void deviceIsNoAddress_data();
    void deviceIsNoAddress();
};

void TestNetworkAddress::addressIsRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isRaw");
    QTest::addColumn<QString>("host");
    QTest::addColumn<int>("port");
    QTest::newRow("name") << u"tcp://reloj:4001"_s << true << u"reloj"_s << 4001;
    QTest::newRow("full name") << u"rfc2217://reloj-2.colegio.es:1"_s << false
                               << u"reloj-2.colegio.es"_s << 1;
    QTest::newRow("IPv4") << u"tcp://192.168.1.20:65535"_s << true << u"192.168.1.20"_s << 65535;
    QTest::newRow("IPv6") << u"rfc2217://[fe80::1]:4001"_s << false << u"fe80::1"_s << 4001;
    QTest::newRow("IPv6 with zone")
        << u"tcp://[fe80::1%eth0]:4001"_s << true << u"fe80::1%eth0"_s << 4001;
    QTest::newRow("IPv6 with zone, as in an URL")
        << u"tcp://[fe80::1%25eth0]:4001"_s << true << u"fe80::1%eth0"_s << 4001;
    QTest::newRow("capitals") << u"RFC2217://RELOJ:4001"_s << false << u"reloj"_s << 4001;
}

void TestNetworkAddress::addressIsRead()
{
    QFETCH(QString, text);
    QFETCH(bool, isRaw);
    const auto address = NetworkAddress::of(text);
    QVERIFY(address);
    QCOMPARE(address->protocol == NetworkAddress::Protocol::Raw, isRaw);
    QTEST(address->host, "host");
    QTEST(static_cast<int>(address->port), "port");
}

void TestNetworkAddress::otherTextIsNone_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("no port") << u"tcp://reloj"_s;
    QTest::newRow("empty port") << u"tcp://reloj:"_s;
    QTest::newRow("port 0") << u"tcp://reloj:0"_s;
    QTest::newRow("port too high") << u"tcp://reloj:65536"_s;
    QTest::newRow("port is no number") << u"tcp://reloj:serie"_s;
    QTest::newRow("no host") << u"tcp://:4001"_s;
    QTest::newRow("another protocol") << u"http://reloj:4001"_s;
    QTest::newRow("no protocol") << u"reloj:4001"_s;
    QTest::newRow("path") << u"tcp://reloj:4001/x"_s;
    QTest::newRow("query") << u"tcp://reloj:4001?x"_s;
    QTest::newRow("fragment") << u"tcp://reloj:4001#x"_s;
    QTest::newRow("user") << u"tcp://juan@reloj:4001"_s;
    QTest::newRow("IPv6 without brackets") << u"tcp://fe80::1:4001"_s;
    QTest::newRow("percent in the name") << u"tcp://el%20reloj:4001"_s;
    QTest::newRow("percent at the end") << u"tcp://reloj:4001%"_s;
    QTest::newRow("blank in the name") << u"tcp://el reloj:4001"_s;
}

void TestNetworkAddress::otherTextIsNone()
{
    QFETCH(QString, text);
    QVERIFY(!NetworkAddress::of(text));
}

void TestNetworkAddress::deviceIsNoAddress_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<bool>("isAddress");
    QTest::newRow("path") << u"/dev/ttyUSB0"_s << false;
    QTest::newRow("number") << u"COM5"_s << false;
    QTest::newRow("nothing") << QString() << false;
    QTest::newRow("address") << u"tcp://reloj:4001"_s << true;
    QTest::newRow("wrong address") << u"telnet://reloj"_s << true;
}

void TestNetworkAddress::deviceIsNoAddress()
{
    QFETCH(QString, device);
    QTEST(NetworkAddress::isMeantBy(device), "isAddress");
}

QTEST_GUILESS_MAIN(TestNetworkAddress)
#include "TestNetworkAddress.moc"
