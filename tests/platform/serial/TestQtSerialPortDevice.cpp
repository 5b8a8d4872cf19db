#include "Files.h"
#include "OrdinaryUser.h"
#include "PortFixture.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>

using namespace Qt::StringLiterals;

namespace {

/// Puts another file in the place of the open device: one that fails without having hung up. False
/// when the device is not found.
bool replaceOpenDevice(PortFixture& f, int other)
{
    const QDir descriptors(u"/proc/self/fd"_s);
    int replaced = 0;
    for (const QString& name : descriptors.entryList(QDir::System | QDir::Files)) {
        const int descriptor = name.toInt();
        if (QFile::symLinkTarget(descriptors.filePath(name)) == f.line.device &&
            !f.line.uses(descriptor) && ::dup2(other, descriptor) == descriptor)
            ++replaced;
    }
    ::close(other);
    return replaced == 1;
}

} // namespace

/// Which devices open, and what happens when an open one vanishes.
class TestQtSerialPortDevice : public QObject {
    Q_OBJECT
private slots:
    /// The toolkit only warns when a closed device is read or written.
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void openPortIsKnownByItsDevice();
    void portInUseIsRefused();
    void lockThatCannotBeRemovedTellsItsFileOfADeadProgram_data();
    void lockThatCannotBeRemovedTellsItsFileOfADeadProgram();
    void lockOfADeviceOutsideDevIsFoundToo();
    void closedPortIsFreeAgain();
    void devicesThatAreNone_data();
    void devicesThatAreNone();
    void deviceThatFailsOtherwiseTellsTheReasonOfTheSystem();
    void deviceWithoutPermissionNamesTheGroup_data();
    void deviceWithoutPermissionNamesTheGroup();
    void unfitSettingsFailTheOpening_data();
    void unfitSettingsFailTheOpening();
    void oddSpeedThatTheDriverTakesOpens();
    void linesThatTheDeviceLacksAreNoReasonToClose();
    void goodOpeningForgetsTheReasonOfTheFailedOne();
    void reopensOnTheDeviceThatHasTakenThePlace();
    void bytesAnnouncedBeforeTheClosingAreNotRead();
    void vanishedDeviceClosesThePortOnce();
    void deviceThatVanishesInMidAnswerIsNoticed();
    void writingToAVanishedDeviceIsSafe();
    void clearingAVanishedDeviceIsSafe();
    void closingInsideTheLossIsSafe();
    void closingInsideTheArrivalIsSafe();
    void deviceThatTakesNoByteForGoodClosesThePortOnceAndLater();
    void deviceThatGivesNoByteForGoodClosesThePortOnce();
};

void TestQtSerialPortDevice::openPortIsKnownByItsDevice()
{
    PortFixture f;
    f.port.open();
    f.device = u"/dev/ttyNone7"_s;
    QCOMPARE(f.port.deviceName(), f.line.device);
    f.port.close();
    QCOMPARE(f.port.deviceName(), u"/dev/ttyNone7"_s);
}

void TestQtSerialPortDevice::portInUseIsRefused()
{
    PortFixture f;
    f.port.open();
    QVERIFY(f.port.isOpen());

    QtSerialPort second(f.names);
    second.open();
    QVERIFY(!second.isOpen());
    QCOMPARE(second.openError(), u"%1 está en uso por otro programa."_s.arg(f.line.device));
    QVERIFY(f.port.isOpen());
}

void TestQtSerialPortDevice::lockThatCannotBeRemovedTellsItsFileOfADeadProgram_data()
{
    QTest::addColumn<QByteArray>("process");
    QTest::addColumn<QString>("reason");
    const QString inUse = u"%1 está en uso por otro programa."_s;
    const QString abandoned = u"%1 figura en uso por un programa que ya no existe: elimine el "
                              u"archivo %2."_s;
    // No process has a number above 4194304.
    QTest::newRow("dead") << QByteArray("4194305\nhct\n") << abandoned;
    QTest::newRow("dead, in the format of other programs")
        << QByteArray("   4194305\n") << abandoned;
    QTest::newRow("alive, of another user") << QByteArray("1\nhct\n") << inUse;
    QTest::newRow("none") << QByteArray("\n") << inUse;
}

void TestQtSerialPortDevice::lockThatCannotBeRemovedTellsItsFileOfADeadProgram()
{
    QFETCH(QByteArray, process);
    QFETCH(QString, reason);
    PortFixture f;
    const OrdinaryUser ordinaryUser(f.line.device);
    QFile lock(u"/var/lock/LCK..pts_"_s + f.line.device.section(u'/', -1));
    QVERIFY(lock.open(QIODevice::WriteOnly));
    const auto removal = qScopeGuard([&lock] { lock.remove(); });
    QCOMPARE(lock.write(process), process.size());
    lock.close();
    // As with a file of another user.
    lock.setPermissions(QFile::ReadOwner | QFile::ReadUser);

    f.port.open();
    QVERIFY(!f.port.isOpen());
    QCOMPARE(f.port.openError(),
             reason.replace(u"%1"_s, f.line.device).replace(u"%2"_s, lock.fileName()));
}

void TestQtSerialPortDevice::lockOfADeviceOutsideDevIsFoundToo()
{
    const QTemporaryDir folder;
    const OrdinaryUser ordinaryUser(folder.path());
    PortFixture f;
    f.device = writeFile(folder.filePath(u"ttyUSB0"_s), "");
    QFile lock(u"/var/lock/LCK.."_s + QString(f.device).replace(u'/', u'_'));
    const auto removal = qScopeGuard([&lock] { lock.remove(); });
    writeFile(lock.fileName(), "4194305\nhct\n");
    lock.setPermissions(QFile::ReadOwner | QFile::ReadUser);

    f.port.open();
    QVERIFY(!f.port.isOpen());
    QCOMPARE(f.port.openError(),
             u"%1 figura en uso por un programa que ya no existe: elimine el archivo %2."_s.arg(
                 f.device, lock.fileName()));
}

void TestQtSerialPortDevice::closedPortIsFreeAgain()
{
    PortFixture f;
    f.port.open();
    f.port.close();
    QVERIFY(!f.port.isOpen());

    QtSerialPort second(f.names);
    second.open();
    QVERIFY2(second.isOpen(), qPrintable(second.openError()));
    second.close();
    f.port.open();
    QVERIFY2(f.port.isOpen(), qPrintable(f.port.openError()));
}

void TestQtSerialPortDevice::devicesThatAreNone_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no port of that number")
        << ""
        << u"No hay ningún puerto serie para COM1: compruebe que el adaptador está "
           u"conectado."_s;
    QTest::newRow("unplugged")
        << "/dev/ttyNone7"
        << u"No existe /dev/ttyNone7: compruebe que el adaptador está conectado."_s;
    QTest::newRow("another kind of device") << "/dev/null" << u"/dev/null no es un puerto serie."_s;
}

void TestQtSerialPortDevice::devicesThatAreNone()
{
    QFETCH(QString, device);
    QFETCH(QString, reason);
    PortFixture f;
    f.device = device;
    f.port.open();
    QVERIFY(!f.port.isOpen());
    QCOMPARE(f.port.openError(), reason);
}

void TestQtSerialPortDevice::deviceThatFailsOtherwiseTellsTheReasonOfTheSystem()
{
    const QTemporaryDir folder;
    PortFixture f;
    f.device = folder.filePath(u"socket"_s);
    sockaddr_un address{AF_UNIX, {}};
    qstrncpy(address.sun_path, QFile::encodeName(f.device).constData(), sizeof address.sun_path);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const auto closing = qScopeGuard([descriptor] { ::close(descriptor); });
    QCOMPARE(::bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    f.port.open();
    QVERIFY(!f.port.isOpen());
    QCOMPARE(f.port.openError(),
             u"No se puede abrir %1 (No such device or address)."_s.arg(f.device));
}

void TestQtSerialPortDevice::deviceWithoutPermissionNamesTheGroup_data()
{
    QTest::addColumn<QFile::Permissions>("permissions");
    QTest::newRow("none") << QFile::Permissions();
    QTest::newRow("to read") << QFile::Permissions(QFile::ReadOwner);
    QTest::newRow("to write") << QFile::Permissions(QFile::WriteOwner);
}

void TestQtSerialPortDevice::deviceWithoutPermissionNamesTheGroup()
{
    QFETCH(QFile::Permissions, permissions);
    const QTemporaryDir folder;
    const OrdinaryUser ordinaryUser(folder.path());
    PortFixture f;
    f.device = folder.filePath(u"ttyUSB0"_s);
    QFile device(f.device);
    QVERIFY(device.open(QIODevice::WriteOnly));
    device.setPermissions(permissions);
    f.port.open();
    QVERIFY(!f.port.isOpen());
    QCOMPARE(f.port.openError(), u"Sin permiso para usar %1: añada su usuario al grupo dialout y "
                                 u"vuelva a iniciar la sesión."_s.arg(f.device));
}

void TestQtSerialPortDevice::unfitSettingsFailTheOpening_data()
{
    QTest::addColumn<QString>("settings");
    QTest::addColumn<QString>("reason");
    QTest::newRow("4 data bits") << "9600,N,4,1" << u"%1 no admite 4 bits de datos."_s;
    QTest::newRow("1.5 stop bits") << "9600,N,8,1.5" << u"%1 no admite 1.5 bits de parada."_s;
    QTest::newRow("no speed") << ",N,8,1" << u"Velocidad no válida: \"\"."_s;
    QTest::newRow("speed 0") << "0,N,8,1" << u"Velocidad no válida: \"0\"."_s;
    // A pseudo-terminal always has 8 data bits and no parity, and tells it only when asked
    // afterwards.
    QTest::newRow("5 data bits here") << "9600,N,5,1" << u"%1 no admite 5 bits de datos."_s;
    QTest::newRow("even parity here") << "9600,E,8,1" << u"%1 no admite la paridad elegida."_s;
}

void TestQtSerialPortDevice::unfitSettingsFailTheOpening()
{
    QFETCH(QString, settings);
    QFETCH(QString, reason);
    PortFixture f;
    f.port.setSettings(settings);
    f.port.open();
    QVERIFY(!f.port.isOpen());
    QCOMPARE(f.port.openError(), reason.replace(u"%1"_s, f.line.device));

    // The failed opening frees the device, and the next one succeeds.
    f.port.setSettings(u"9600,N,8,1"_s);
    f.port.open();
    QVERIFY2(f.port.isOpen(), qPrintable(f.port.openError()));
}

void TestQtSerialPortDevice::oddSpeedThatTheDriverTakesOpens()
{
    PortFixture f;
    for (const auto& settings : {u"9601,N,8,1"_s, u"256000,N,8,2"_s, u"110,N,8,1"_s}) {
        f.port.setSettings(settings);
        f.port.open();
        QVERIFY2(f.port.isOpen(), qPrintable(settings + f.port.openError()));
        f.port.close();
    }
}

void TestQtSerialPortDevice::linesThatTheDeviceLacksAreNoReasonToClose()
{
    PortFixture f;
    f.port.setDtrEnabled(true);
    f.port.open();
    QVERIFY2(f.port.isOpen(), qPrintable(f.port.openError()));

    f.port.setDtrEnabled(false);
    f.port.setRtsEnabled(true);
    QVERIFY(f.port.isOpen());
}

void TestQtSerialPortDevice::goodOpeningForgetsTheReasonOfTheFailedOne()
{
    PortFixture f;
    f.device.clear();
    f.port.open();
    QVERIFY(!f.port.openError().isEmpty());
    f.device = f.line.device;
    f.port.open();
    QCOMPARE(f.port.openError(), QString());
}

void TestQtSerialPortDevice::reopensOnTheDeviceThatHasTakenThePlace()
{
    PortFixture f;
    QSignalSpy lost(&f.port, &SerialPort::lost);
    f.port.open();
    f.line.vanish();
    QTRY_COMPARE(lost.count(), 1);

    PseudoTerminal pluggedIn;
    f.device = pluggedIn.device;
    f.port.open();
    QVERIFY2(f.port.isOpen(), qPrintable(f.port.openError()));
    QCOMPARE(f.port.deviceName(), pluggedIn.device);
    f.port.write("again");
    QCOMPARE(pluggedIn.received(), "again");
    QVERIFY(pluggedIn.send("yes"));
    QTRY_COMPARE(f.port.inputCount(), 3);
}

void TestQtSerialPortDevice::bytesAnnouncedBeforeTheClosingAreNotRead()
{
    PortFixture f;
    f.port.open();
    f.port.setReceiveThreshold(1);
    QVERIFY(f.line.send("late"));
    QVERIFY(f.line.waitUntilWithDriver(4));
    // Announced now, read when events are processed next.
    QCoreApplication::processEvents();
    f.port.close();
    QCoreApplication::processEvents();
    QCOMPARE(f.port.inputCount(), 0);
}

void TestQtSerialPortDevice::vanishedDeviceClosesThePortOnce()
{
    PortFixture f;
    f.port.open();
    bool openWhenTold = true;
    QSignalSpy lost(&f.port, &SerialPort::lost);
    connect(&f.port, &SerialPort::lost, this, [&] { openWhenTold = f.port.isOpen(); });

    f.line.vanish();
    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(!openWhenTold);
    QVERIFY(!f.port.isOpen());
    for (int pass = 0; pass < 100; ++pass)
        QCoreApplication::processEvents();
    QCOMPARE(lost.count(), 1);
}

void TestQtSerialPortDevice::deviceThatVanishesInMidAnswerIsNoticed()
{
    PortFixture f;
    f.port.setSettings(u"110,N,8,1"_s);
    f.port.open();
    f.port.setReceiveThreshold(500);
    QSignalSpy lost(&f.port, &SerialPort::lost);
    QVERIFY(f.line.send("partial"));
    QTRY_COMPARE(f.port.inputCount(), 7);

    f.line.vanish();
    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(!f.port.isOpen());
}

void TestQtSerialPortDevice::writingToAVanishedDeviceIsSafe()
{
    PortFixture f;
    f.port.open();
    QSignalSpy lost(&f.port, &SerialPort::lost);

    f.line.vanish();
    f.port.write("unheard");
    f.port.write("unheard");
    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(!f.port.isOpen());
    f.port.write("unheard");
    QCOMPARE(lost.count(), 1);
}

void TestQtSerialPortDevice::clearingAVanishedDeviceIsSafe()
{
    PortFixture f;
    f.port.open();
    QSignalSpy lost(&f.port, &SerialPort::lost);

    f.line.vanish();
    f.port.clearOutput();
    f.port.clearInput();
    f.port.setDtrEnabled(true);
    QTRY_COMPARE(lost.count(), 1);
    f.port.clearOutput();
    f.port.clearInput();
    f.port.close();
    QCOMPARE(lost.count(), 1);
}

void TestQtSerialPortDevice::closingInsideTheLossIsSafe()
{
    PortFixture f;
    f.port.open();
    int losses = 0;
    connect(&f.port, &SerialPort::lost, this, [&] {
        ++losses;
        f.port.close();
        f.port.open();
    });

    f.line.vanish();
    QTRY_COMPARE(losses, 1);
    QVERIFY(!f.port.isOpen());
    QVERIFY(!f.port.openError().isEmpty());
}

void TestQtSerialPortDevice::closingInsideTheArrivalIsSafe()
{
    PortFixture f;
    f.port.open();
    // With so many to come, reading would rest.
    f.port.setReceiveThreshold(1);
    connect(&f.port, &SerialPort::received, this, [&] {
        f.port.setReceiveThreshold(500);
        f.port.close();
    });
    QVERIFY(f.line.send("x"));
    QTRY_VERIFY(!f.port.isOpen());
    QVERIFY(!f.port.findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly)->isActive());
}

void TestQtSerialPortDevice::deviceThatTakesNoByteForGoodClosesThePortOnceAndLater()
{
    PortFixture f;
    f.port.open();
    QSignalSpy lost(&f.port, &SerialPort::lost);
    // Nothing to read, always ready to be written, and refuses fewer than 8 bytes.
    QVERIFY(replaceOpenDevice(f, ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)));

    f.port.write("x");
    // The writer may be in the midst of its work.
    QCOMPARE(lost.count(), 0);
    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(!f.port.isOpen());
    QCoreApplication::processEvents();
    QCOMPARE(lost.count(), 1);
}

void TestQtSerialPortDevice::deviceThatGivesNoByteForGoodClosesThePortOnce()
{
    PortFixture f;
    f.port.open();
    QSignalSpy lost(&f.port, &SerialPort::lost);
    // A folder always seems to have something to read, and refuses to give it.
    QVERIFY(replaceOpenDevice(f, ::open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC)));

    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(!f.port.isOpen());
    QCoreApplication::processEvents();
    QCOMPARE(lost.count(), 1);
}

QTEST_GUILESS_MAIN(TestQtSerialPortDevice)
#include "TestQtSerialPortDevice.moc"
