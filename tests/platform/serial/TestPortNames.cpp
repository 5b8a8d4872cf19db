#include "MemoryRegistry.h"
#include "OwnPortNames.h"
#include "PortNames.h"

#include <QMap>
#include <QTest>

using namespace Qt::StringLiterals;

class TestPortNames : public QObject {
    Q_OBJECT

private slots:
    void init();
    void ownNameComesFirst();
    void ownNameMayBeAPathToo();
    void ownNameIsWrittenAndRemoved();
    void ownNameThatIsNoTextIsNone();
    void givenDeviceComesBeforeAll();
    void addressMayStandWhereADeviceMay();
    void environmentComesBeforeTheSystemsNames();
    void nameWithoutFolderIsADeviceName();
    void registryComesBeforeTheSystemsList();
    void valuesThatAreNoDeviceHereAreIgnored();
    void systemPortsCountInNaturalOrder();
    void sameNumberLeavesTheOrderToWhatFollows();
    void nameThatBeginsAnotherComesFirst();
    void numberComesBeforeALetter();
    void portsThatDoNotExistHaveNoDevice_data();
    void portsThatDoNotExistHaveNoDevice();
    void listIsLookedUpAnewEachTime();
    void allDevicesAreThoseOfTheirNumbers();
    void allDevicesTakeOneListing();
    void namedDeviceTakesNoListing();

private:
    void registerDevice(const QString& device, const QByteArray& portName,
                        quint32 type = RegistryValue::Text)
    {
        m_registry.values.insert(MemoryRegistry::path(Registry::RootKey::LocalMachine,
                                                      u"HARDWARE\\DEVICEMAP\\SERIALCOMM"_s, device),
                                 {type, portName + '\0'});
    }

    MemoryRegistry m_registry;
    QMap<QString, QString> m_variables;
    QStringList m_ports;
    int m_listings = 0;
    PortNames m_names{m_registry,
                      [this](const QString& variable) { return m_variables.value(variable); },
                      [this] {
                          ++m_listings;
                          return m_ports;
                      }};
};

void TestPortNames::init()
{
    m_registry.values.clear();
    m_variables.clear();
    m_listings = 0;
    m_ports = {u"/dev/ttyUSB10"_s, u"/dev/ttyUSB2"_s, u"/dev/ttyS0"_s, u"/dev/ttyACM0"_s};
}

void TestPortNames::ownNameComesFirst()
{
    m_registry.setText(u"Software\\Quorvex\\Lurimat\\Puertos"_s, u"COM5"_s,
                       " rfc2217://192.168.1.20:4001 ");
    m_variables[u"HCT_COM5"_s] = u"/dev/pts/7"_s;
    QCOMPARE(m_names.device(5), u"rfc2217://192.168.1.20:4001"_s);
    QCOMPARE(m_names.namedDevice(5), u"rfc2217://192.168.1.20:4001"_s);
    QCOMPARE(m_names.devices().at(4), u"rfc2217://192.168.1.20:4001"_s);
}

void TestPortNames::ownNameMayBeAPathToo()
{
    m_registry.setText(u"Software\\Quorvex\\Lurimat\\Puertos"_s, u"COM5"_s, "ttyUSB3");
    QCOMPARE(m_names.device(5), u"/dev/ttyUSB3"_s);
}

void TestPortNames::ownNameIsWrittenAndRemoved()
{
    QVERIFY(OwnPortNames::set(m_registry, 16, u"tcp://reloj:4001"_s));
    QCOMPARE(m_registry.text(u"Software\\Quorvex\\Lurimat\\Puertos"_s, u"COM16"_s),
             QByteArray("tcp://reloj:4001"));
    QCOMPARE(m_names.device(16), u"tcp://reloj:4001"_s);
    QVERIFY(OwnPortNames::unset(m_registry, 16));
    QCOMPARE(m_registry.values.size(), 0);
    QVERIFY(OwnPortNames::unset(m_registry, 16));
    QCOMPARE(m_names.device(16), QString());
}

void TestPortNames::ownNameThatIsNoTextIsNone()
{
    m_registry.values.insert(MemoryRegistry::path(Registry::RootKey::CurrentUser,
                                                  u"Software\\Quorvex\\Lurimat\\Puertos"_s,
                                                  u"COM16"_s),
                             {RegistryValue::Dword, QByteArray("/dev", 4)});
    QCOMPARE(m_names.device(16), QString());
}

void TestPortNames::givenDeviceComesBeforeAll()
{
    m_registry.setText(u"Software\\Quorvex\\Lurimat\\Puertos"_s, u"COM1"_s, "tcp://reloj:4001");
    PortNames names = m_names;
    names.setDevice(1, u"/dev/ttyUSB7"_s);
    QCOMPARE(names.device(1), u"/dev/ttyUSB7"_s);
    QCOMPARE(names.namedDevice(1), u"/dev/ttyUSB7"_s);
}

void TestPortNames::addressMayStandWhereADeviceMay()
{
    m_variables[u"HCT_COM1"_s] = u"tcp://reloj:4001"_s;
    registerDevice(u"rfc2217://[fe80::1]:4001"_s, "COM2");
    QCOMPARE(m_names.device(1), u"tcp://reloj:4001"_s);
    QCOMPARE(m_names.device(2), u"rfc2217://[fe80::1]:4001"_s);
}

void TestPortNames::environmentComesBeforeTheSystemsNames()
{
    m_variables[u"HCT_COM1"_s] = u"/dev/pts/7"_s;
    m_variables[u"HCT_COM16"_s] = u" /dev/ttyUSB3 "_s;
    registerDevice(u"/dev/ttyUSB0"_s, "COM1");
    QCOMPARE(m_names.device(1), u"/dev/pts/7"_s);
    QCOMPARE(m_names.device(16), u"/dev/ttyUSB3"_s);
}

void TestPortNames::nameWithoutFolderIsADeviceName()
{
    m_variables[u"HCT_COM1"_s] = u"ttyUSB0"_s;
    QCOMPARE(m_names.device(1), u"/dev/ttyUSB0"_s);
}

void TestPortNames::registryComesBeforeTheSystemsList()
{
    registerDevice(u"/dev/ttyUSB0"_s, "COM10");
    registerDevice(u"/dev/ttyUSB1"_s, "COM1");
    registerDevice(u"/dev/ttyUSB5"_s, "com3");
    QCOMPARE(m_names.device(1), u"/dev/ttyUSB1"_s);
    QCOMPARE(m_names.device(3), u"/dev/ttyUSB5"_s);
    QCOMPARE(m_names.device(10), u"/dev/ttyUSB0"_s);
    QCOMPARE(m_names.device(2), u"/dev/ttyS0"_s);
}

void TestPortNames::valuesThatAreNoDeviceHereAreIgnored()
{
    registerDevice(u"\\Device\\Serial0"_s, "COM1");
    registerDevice(u"/dev/ttyUSB7"_s, "COM1", RegistryValue::Dword);
    QCOMPARE(m_names.device(1), u"/dev/ttyACM0"_s);
}

void TestPortNames::systemPortsCountInNaturalOrder()
{
    QCOMPARE(m_names.device(1), u"/dev/ttyACM0"_s);
    QCOMPARE(m_names.device(2), u"/dev/ttyS0"_s);
    QCOMPARE(m_names.device(3), u"/dev/ttyUSB2"_s);
    QCOMPARE(m_names.device(4), u"/dev/ttyUSB10"_s);
}

void TestPortNames::sameNumberLeavesTheOrderToWhatFollows()
{
    m_ports = {u"/dev/tty1c"_s, u"/dev/tty01b"_s, u"/dev/tty1b10"_s, u"/dev/tty1b9"_s};
    QCOMPARE(m_names.devices().mid(0, 4),
             (QStringList{u"/dev/tty01b"_s, u"/dev/tty1b9"_s, u"/dev/tty1b10"_s, u"/dev/tty1c"_s}));
}

void TestPortNames::nameThatBeginsAnotherComesFirst()
{
    m_ports = {u"/dev/ttyS0"_s, u"/dev/ttyS"_s, u"/dev/tty"_s};
    QCOMPARE(m_names.devices().mid(0, 3),
             (QStringList{u"/dev/tty"_s, u"/dev/ttyS"_s, u"/dev/ttyS0"_s}));
}

void TestPortNames::numberComesBeforeALetter()
{
    m_ports = {u"/dev/ttyS0"_s, u"/dev/tty1"_s};
    QCOMPARE(m_names.devices().mid(0, 2), (QStringList{u"/dev/tty1"_s, u"/dev/ttyS0"_s}));
}

void TestPortNames::portsThatDoNotExistHaveNoDevice_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("beyond the list") << 5;
    QTest::newRow("0") << 0;
    QTest::newRow("below 0") << -1;
    QTest::newRow("17") << 17;
    QTest::newRow("very high") << 2147483647;
}

void TestPortNames::portsThatDoNotExistHaveNoDevice()
{
    QFETCH(int, number);
    m_variables[u"HCT_COM17"_s] = u"/dev/ttyUSB0"_s;
    QCOMPARE(m_names.device(number), QString());
}

void TestPortNames::listIsLookedUpAnewEachTime()
{
    m_ports.clear();
    QCOMPARE(m_names.device(1), QString());
    m_ports = {u"/dev/ttyUSB0"_s};
    QCOMPARE(m_names.device(1), u"/dev/ttyUSB0"_s);
}

void TestPortNames::allDevicesAreThoseOfTheirNumbers()
{
    m_variables[u"HCT_COM2"_s] = u"ttyUSB3"_s;
    registerDevice(u"/dev/ttyUSB5"_s, "COM16");
    QCOMPARE(m_names.devices(), QStringList({u"/dev/ttyACM0"_s, u"/dev/ttyUSB3"_s,
                                             u"/dev/ttyUSB2"_s, u"/dev/ttyUSB10"_s}) +
                                    QStringList(11, QString()) + QStringList(u"/dev/ttyUSB5"_s));
}

void TestPortNames::allDevicesTakeOneListing()
{
    QCOMPARE(m_names.devices().size(), 16);
    QCOMPARE(m_listings, 1);
}

void TestPortNames::namedDeviceTakesNoListing()
{
    m_variables[u"HCT_COM1"_s] = u"/dev/pts/7"_s;
    registerDevice(u"/dev/ttyUSB5"_s, "COM2");
    QCOMPARE(m_names.device(1), u"/dev/pts/7"_s);
    QCOMPARE(m_names.device(2), u"/dev/ttyUSB5"_s);
    QCOMPARE(m_listings, 0);
}

QTEST_GUILESS_MAIN(TestPortNames)
#include "TestPortNames.moc"
