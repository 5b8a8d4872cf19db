#include "FakeClockOfDay.h"
#include "MemoryRegistry.h"
#include "PortNames.h"
#include "PseudoTerminal.h"
#include "QtSerialPort.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

/// The port over real pseudo-terminals. Its COM1 is whatever `m_device` says.
class TestQtSerialPort : public QObject {
    Q_OBJECT

private slots:
    void init() { m_device.clear(); }

    void allByteValuesPassBothWays();
    void writtenBytesAreWithTheDriverOnReturn();
    void bytesWrittenTogetherArriveInOrder();
    void clearingReachesTheDriver();
    void clearingTheInputDiscardsWhatTheDriverHolds();
    void fullDriverIsNoReasonToClose();
    void bytesArriveWhileTheHandlerOfEarlierOnesRunsEvents();
    void awaitedBytesDoNotWakeTheProgramOneByOne();
    void restOfAnAnswerArrivesAfterTheRest();
    void newRequestIsNotKeptFromItsAnswerByTheRest();
    void linesThatTheDeviceLacksAreNoReasonToClose();

    void vanishedDeviceClosesThePortOnce();
    void deviceThatVanishesInMidAnswerIsNoticed();
    void writingToAVanishedDeviceIsSafe();
    void clearingAVanishedDeviceIsSafe();
    void reopensOnTheDeviceThatHasTakenThePlace();
    void closingInsideTheLossIsSafe();

    void portInUseIsRefused();
    void closedPortIsFreeAgain();
    void devicesThatAreNone_data();
    void devicesThatAreNone();
    void deviceWithoutPermissionNamesTheGroup();
    void unfitSettingsFailTheOpening_data();
    void unfitSettingsFailTheOpening();
    void oddSpeedThatTheDriverTakesOpens();
    void goodOpeningForgetsTheReasonOfTheFailedOne();

private:
    MemoryRegistry m_registry;
    QString m_device;
    PortNames m_names{m_registry,
                      [this](const QString& variable) {
                          return variable == u"HCT_COM1"_s ? m_device : QString();
                      },
                      [] { return QStringList(); }};
};

static QByteArray allByteValues()
{
    QByteArray bytes;
    for (int value = 0; value < 256; ++value)
        bytes.append(static_cast<char>(value));
    return bytes;
}

void TestQtSerialPort::allByteValuesPassBothWays()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.open();
    QVERIFY2(port.isOpen(), qPrintable(port.openError()));
    QCOMPARE(port.deviceName(), line.device);

    port.write(allByteValues());
    QCOMPARE(line.received(), allByteValues());

    QVERIFY(line.send(allByteValues()));
    QTRY_COMPARE(port.inputCount(), 256);
    QCOMPARE(port.read(), allByteValues());
}

void TestQtSerialPort::writtenBytesAreWithTheDriverOnReturn()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.open();

    // No event runs in between: the gap after the first byte of a frame depends on it.
    port.write("\x68");
    QCOMPARE(line.received(), "\x68");
    port.write("\x16");
    QCOMPARE(line.received(), "\x16");
}

void TestQtSerialPort::bytesWrittenTogetherArriveInOrder()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.open();

    port.write("one");
    port.write("two");
    port.write("");
    port.write("three");
    QCOMPARE(line.received(), "onetwothree");
    QCoreApplication::processEvents();
    QCOMPARE(line.received(), "");
}

void TestQtSerialPort::clearingReachesTheDriver()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.open();
    line.takeFlushes();

    port.clearOutput();
    QCOMPARE(line.takeFlushes(), TIOCPKT_FLUSHWRITE);
    port.clearInput();
    QCOMPARE(line.takeFlushes(), TIOCPKT_FLUSHREAD);
}

void TestQtSerialPort::clearingTheInputDiscardsWhatTheDriverHolds()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.open();
    port.setReceiveThreshold(1);
    QSignalSpy received(&port, &SerialPort::received);

    QVERIFY(line.send("first"));
    QTRY_COMPARE(port.inputCount(), 5);
    QVERIFY(line.send("second"));
    QVERIFY(line.waitUntilWithDriver(6));
    port.clearInput();
    QCOMPARE(port.inputCount(), 0);

    QVERIFY(line.send("answer"));
    QTRY_COMPARE(port.inputCount(), 6);
    QCOMPARE(port.read(), "answer");
}

void TestQtSerialPort::fullDriverIsNoReasonToClose()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    QSignalSpy lost(&port, &SerialPort::lost);
    port.open();

    // Far more than any driver holds while nobody reads.
    const qsizetype much = 2'000'000;
    port.write(QByteArray(much, 'x'));
    port.write(QByteArray(much, 'x'));
    QCoreApplication::processEvents();
    QVERIFY(port.isOpen());
    QCOMPARE(lost.count(), 0);

    // What waited in the program is gone.
    port.clearOutput();
    QByteArray heard = line.received();
    port.write("new");
    QTRY_VERIFY((heard += line.received()).endsWith("new"));
    QVERIFY(heard.size() < much);
}

void TestQtSerialPort::bytesArriveWhileTheHandlerOfEarlierOnesRunsEvents()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.open();
    port.setReceiveThreshold(1);
    // As a box does that stands over the handler of an answer.
    bool cameMeanwhile = false;
    connect(
        &port, &SerialPort::received, this,
        [&] {
            port.read();
            line.send("second");
            cameMeanwhile = QTest::qWaitFor([&] { return port.inputCount() == 6; });
        },
        Qt::SingleShotConnection);

    QVERIFY(line.send("first"));
    QTRY_VERIFY(cameMeanwhile);
}

/// Counts what devices wake the program for.
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

void TestQtSerialPort::awaitedBytesDoNotWakeTheProgramOneByOne()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.setSettings(u"110,N,8,1"_s);
    port.open();
    port.setReceiveThreshold(100);
    QSignalSpy received(&port, &SerialPort::received);

    // Each byte is with the driver while events run; watched all the time, each would be an event.
    WakeUpCounter wakeUps;
    for (int byte = 0; byte < 99; ++byte) {
        QVERIFY(line.send("x"));
        QVERIFY(line.waitUntilWithDriver(1));
        QCoreApplication::processEvents();
    }
    QVERIFY2(wakeUps.count < 99, QByteArray::number(wakeUps.count));
    QCOMPARE(received.count(), 0);

    QVERIFY(line.send("y"));
    QTRY_COMPARE(received.count(), 1);
    QCOMPARE(port.read(), QByteArray(99, 'x') + "y");
}

void TestQtSerialPort::restOfAnAnswerArrivesAfterTheRest()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.open();
    port.setReceiveThreshold(1);
    QSignalSpy received(&port, &SerialPort::received);
    connect(&port, &SerialPort::received, this, [&] { port.setReceiveThreshold(200); });

    QVERIFY(line.send("header"));
    QTRY_COMPARE(received.count(), 1);
    QVERIFY(line.send(QByteArray(193, 'x')));
    QVERIFY(line.waitUntilWithDriver(193));
    QVERIFY(line.send("y"));
    QTRY_COMPARE(received.count(), 2);
    QCOMPARE(port.read(), "header" + QByteArray(193, 'x') + "y");
}

void TestQtSerialPort::newRequestIsNotKeptFromItsAnswerByTheRest()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.open();
    port.setReceiveThreshold(500);
    QVERIFY(line.send("partial"));
    QTRY_COMPARE(port.inputCount(), 7);

    port.clearInput();
    port.setReceiveThreshold(1);
    QSignalSpy received(&port, &SerialPort::received);
    QVERIFY(line.send("answer"));
    QVERIFY(line.waitUntilWithDriver(6));
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QCOMPARE(received.count(), 1);
    QCOMPARE(port.read(), "answer");
}

void TestQtSerialPort::linesThatTheDeviceLacksAreNoReasonToClose()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.setDtrEnabled(true);
    port.open();
    QVERIFY2(port.isOpen(), qPrintable(port.openError()));

    port.setDtrEnabled(false);
    port.setRtsEnabled(true);
    QVERIFY(port.isOpen());
    QVERIFY(!port.isDtrEnabled());
    QVERIFY(port.isRtsEnabled());
}

void TestQtSerialPort::vanishedDeviceClosesThePortOnce()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.open();
    bool openWhenTold = true;
    QSignalSpy lost(&port, &SerialPort::lost);
    connect(&port, &SerialPort::lost, this, [&] { openWhenTold = port.isOpen(); });

    line.vanish();
    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(!openWhenTold);
    QVERIFY(!port.isOpen());
    for (int pass = 0; pass < 100; ++pass)
        QCoreApplication::processEvents();
    QCOMPARE(lost.count(), 1);
}

void TestQtSerialPort::deviceThatVanishesInMidAnswerIsNoticed()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.setSettings(u"110,N,8,1"_s);
    port.open();
    port.setReceiveThreshold(500);
    QSignalSpy lost(&port, &SerialPort::lost);
    QVERIFY(line.send("partial"));
    QTRY_COMPARE(port.inputCount(), 7);

    line.vanish();
    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(!port.isOpen());
}

void TestQtSerialPort::writingToAVanishedDeviceIsSafe()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.open();
    QSignalSpy lost(&port, &SerialPort::lost);

    line.vanish();
    port.write("unheard");
    port.write("unheard");
    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(!port.isOpen());
    port.write("unheard");
    QCOMPARE(lost.count(), 1);
}

void TestQtSerialPort::clearingAVanishedDeviceIsSafe()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.open();
    QSignalSpy lost(&port, &SerialPort::lost);

    line.vanish();
    port.clearOutput();
    port.clearInput();
    port.setDtrEnabled(true);
    QTRY_COMPARE(lost.count(), 1);
    port.clearOutput();
    port.clearInput();
    port.close();
    QCOMPARE(lost.count(), 1);
}

void TestQtSerialPort::reopensOnTheDeviceThatHasTakenThePlace()
{
    PseudoTerminal unplugged;
    m_device = unplugged.device;
    QtSerialPort port(m_names);
    QSignalSpy lost(&port, &SerialPort::lost);
    port.open();
    unplugged.vanish();
    QTRY_COMPARE(lost.count(), 1);

    PseudoTerminal pluggedIn;
    m_device = pluggedIn.device;
    port.open();
    QVERIFY2(port.isOpen(), qPrintable(port.openError()));
    QCOMPARE(port.deviceName(), pluggedIn.device);
    port.write("again");
    QCOMPARE(pluggedIn.received(), "again");
    QVERIFY(pluggedIn.send("yes"));
    QTRY_COMPARE(port.inputCount(), 3);
}

void TestQtSerialPort::closingInsideTheLossIsSafe()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.open();
    int losses = 0;
    connect(&port, &SerialPort::lost, this, [&] {
        ++losses;
        port.close();
        port.open();
    });

    line.vanish();
    QTRY_COMPARE(losses, 1);
    QVERIFY(!port.isOpen());
    QVERIFY(!port.openError().isEmpty());
}

void TestQtSerialPort::portInUseIsRefused()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort first(m_names);
    first.open();
    QVERIFY(first.isOpen());

    QtSerialPort second(m_names);
    second.open();
    QVERIFY(!second.isOpen());
    QCOMPARE(second.openError(), u"%1 está en uso por otro programa."_s.arg(line.device));
    QVERIFY(first.isOpen());
}

void TestQtSerialPort::closedPortIsFreeAgain()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort first(m_names);
    first.open();
    first.close();
    QVERIFY(!first.isOpen());

    QtSerialPort second(m_names);
    second.open();
    QVERIFY2(second.isOpen(), qPrintable(second.openError()));
    second.close();
    first.open();
    QVERIFY2(first.isOpen(), qPrintable(first.openError()));
}

void TestQtSerialPort::devicesThatAreNone_data()
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

void TestQtSerialPort::devicesThatAreNone()
{
    QFETCH(QString, device);
    QFETCH(QString, reason);
    m_device = device;
    QtSerialPort port(m_names);
    port.open();
    QVERIFY(!port.isOpen());
    QCOMPARE(port.openError(), reason);
}

void TestQtSerialPort::deviceWithoutPermissionNamesTheGroup()
{
    if (::geteuid() == 0)
        QSKIP("root may open everything");
    QTemporaryDir folder;
    m_device = folder.filePath(u"ttyUSB0"_s);
    QFile device(m_device);
    QVERIFY(device.open(QIODevice::WriteOnly));
    device.setPermissions({});
    QtSerialPort port(m_names);
    port.open();
    QVERIFY(!port.isOpen());
    QCOMPARE(port.openError(), u"Sin permiso para usar %1: añada su usuario al grupo dialout y "
                               u"vuelva a iniciar la sesión."_s.arg(m_device));
}

void TestQtSerialPort::unfitSettingsFailTheOpening_data()
{
    QTest::addColumn<QString>("settings");
    QTest::addColumn<QString>("reason");
    QTest::newRow("4 data bits") << "9600,N,4,1" << u"%1 no admite 4 bits de datos."_s;
    QTest::newRow("1.5 stop bits") << "9600,N,8,1.5" << u"%1 no admite 1.5 bits de parada."_s;
    QTest::newRow("no speed") << ",N,8,1" << u"Velocidad no válida: \"\"."_s;
    QTest::newRow("speed 0") << "0,N,8,1" << u"Velocidad no válida: \"0\"."_s;
    // A pseudo-terminal has 8 data bits and no parity, which it says only when asked afterwards.
    QTest::newRow("5 data bits here") << "9600,N,5,1" << u"%1 no admite 5 bits de datos."_s;
    QTest::newRow("even parity here") << "9600,E,8,1" << u"%1 no admite la paridad elegida."_s;
    QTest::newRow("mark parity here") << "9600,M,8,1" << u"%1 no admite la paridad elegida."_s;
    QTest::newRow("space parity here") << "9600,S,8,1" << u"%1 no admite la paridad elegida."_s;
}

void TestQtSerialPort::unfitSettingsFailTheOpening()
{
    QFETCH(QString, settings);
    QFETCH(QString, reason);
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    port.setSettings(settings);
    port.open();
    QVERIFY(!port.isOpen());
    QCOMPARE(port.openError(), reason.replace(u"%1"_s, line.device));

    // The failed opening lets go of the device and does not spoil the next one.
    port.setSettings(u"9600,N,8,1"_s);
    port.open();
    QVERIFY2(port.isOpen(), qPrintable(port.openError()));
}

void TestQtSerialPort::oddSpeedThatTheDriverTakesOpens()
{
    PseudoTerminal line;
    m_device = line.device;
    QtSerialPort port(m_names);
    for (const auto& settings : {u"9601,N,8,1"_s, u"256000,N,8,2"_s, u"110,N,8,1"_s}) {
        port.setSettings(settings);
        port.open();
        QVERIFY2(port.isOpen(), qPrintable(settings + port.openError()));
        port.close();
    }
}

void TestQtSerialPort::goodOpeningForgetsTheReasonOfTheFailedOne()
{
    QtSerialPort port(m_names);
    port.open();
    QVERIFY(!port.openError().isEmpty());
    PseudoTerminal line;
    m_device = line.device;
    port.open();
    QCOMPARE(port.openError(), QString());
}

QTEST_GUILESS_MAIN(TestQtSerialPort)
#include "TestQtSerialPort.moc"
