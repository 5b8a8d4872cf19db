#include "PortFixture.h"
#include "StandInDriver.h"

#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

/// What the driver of a device is told: lines and parameters.
class TestQtSerialPortDriver : public QObject {
    Q_OBJECT
private slots:
    void linesAreSetOnOpening_data();
    void linesAreSetOnOpening();
    void linesChangeWhileThePortIsOpen();
    void parametersReachTheDriver_data();
    void parametersReachTheDriver();
    void flowControlIsOff();
    void parameterThatTheDriverIgnoresFailsTheOpening_data();
    void parameterThatTheDriverIgnoresFailsTheOpening();
    void parameterThatTheDriverRefusesFailsTheOpening_data();
    void parameterThatTheDriverRefusesFailsTheOpening();
    void speedThatTheDriverChangesFailsTheOpening();
    void driverThatDoesNotTellItsParametersFailsTheOpening();
    void readingThatFailsForTheMomentIsTriedAgain_data();
    void readingThatFailsForTheMomentIsTriedAgain();
    void writingThatFailsForTheMomentIsTriedAgain_data();
    void writingThatFailsForTheMomentIsTriedAgain();
    void driverThatTakesNothingOfWhatWaitsIsNoReasonToClose();
    void restIsAsLongAsTheMissingBytes_data();
    void restIsAsLongAsTheMissingBytes();
    void bytesFasterThanTheLineAreNotRestedFor();
    void closingEndsTheRest();
};

void TestQtSerialPortDriver::linesAreSetOnOpening_data()
{
    QTest::addColumn<bool>("dtr");
    QTest::addColumn<bool>("rts");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::newRow("both") << true << true << 0 << (TIOCM_DTR | TIOCM_RTS);
    QTest::newRow("DTR") << true << false << int{TIOCM_RTS} << int{TIOCM_DTR};
    QTest::newRow("RTS") << false << true << int{TIOCM_DTR} << int{TIOCM_RTS};
    QTest::newRow("none") << false << false << (TIOCM_DTR | TIOCM_RTS) << 0;
}

void TestQtSerialPortDriver::linesAreSetOnOpening()
{
    QFETCH(bool, dtr);
    QFETCH(bool, rts);
    QFETCH(int, before);
    StandInDriver driver;
    PortFixture f;
    driver.lines = before;
    f.port.setDtrEnabled(dtr);
    f.port.setRtsEnabled(rts);
    f.port.open();
    QVERIFY2(f.port.isOpen(), qPrintable(f.port.openError()));
    QTEST(driver.lines, "after");
}

void TestQtSerialPortDriver::linesChangeWhileThePortIsOpen()
{
    StandInDriver driver;
    PortFixture f;
    f.port.setDtrEnabled(true);
    f.port.setRtsEnabled(false);
    f.port.open();
    f.port.setDtrEnabled(false);
    QCOMPARE(driver.lines, 0);
    f.port.setRtsEnabled(true);
    QCOMPARE(driver.lines, TIOCM_RTS);
    f.port.setDtrEnabled(true);
    QCOMPARE(driver.lines, TIOCM_DTR | TIOCM_RTS);
    f.port.setRtsEnabled(false);
    QCOMPARE(driver.lines, TIOCM_DTR);
}

void TestQtSerialPortDriver::parametersReachTheDriver_data()
{
    QTest::addColumn<QString>("settings");
    QTest::addColumn<tcflag_t>("flags");
    QTest::newRow("no parity") << u"9600,N,8,1"_s << tcflag_t{CS8};
    QTest::newRow("even") << u"9600,E,8,1"_s << tcflag_t{CS8 | PARENB};
    QTest::newRow("odd") << u"9600,O,8,1"_s << tcflag_t{CS8 | PARENB | PARODD};
    QTest::newRow("mark") << u"9600,M,8,1"_s << tcflag_t{CS8 | PARENB | PARODD | CMSPAR};
    QTest::newRow("space") << u"9600,S,8,1"_s << tcflag_t{CS8 | PARENB | CMSPAR};
    QTest::newRow("7 bits") << u"9600,N,7,1"_s << tcflag_t{CS7};
    QTest::newRow("6 bits") << u"9600,N,6,1"_s << tcflag_t{CS6};
    QTest::newRow("5 bits") << u"9600,N,5,1"_s << tcflag_t{CS5};
    QTest::newRow("2 stop bits") << u"9600,N,8,2"_s << tcflag_t{CS8 | CSTOPB};
}

void TestQtSerialPortDriver::parametersReachTheDriver()
{
    QFETCH(QString, settings);
    StandInDriver driver;
    PortFixture f;
    f.port.setSettings(settings);
    f.port.open();
    QVERIFY2(f.port.isOpen(), qPrintable(f.port.openError()));
    const tcflag_t flags = driver.wanted->c_cflag & (CSIZE | PARENB | PARODD | CMSPAR | CSTOPB);
    QTEST(flags, "flags");
}

void TestQtSerialPortDriver::flowControlIsOff()
{
    PortFixture f;
    termios before{};
    const int descriptor = ::open(f.line.device.toLatin1().constData(), O_RDWR | O_NOCTTY);
    QCOMPARE(::tcgetattr(descriptor, &before), 0);
    before.c_cflag |= CRTSCTS;
    before.c_iflag |= IXON | IXOFF;
    QCOMPARE(::tcsetattr(descriptor, TCSANOW, &before), 0);
    ::close(descriptor);

    StandInDriver driver;
    f.port.open();
    QVERIFY2(f.port.isOpen(), qPrintable(f.port.openError()));
    QCOMPARE(driver.wanted->c_cflag & CRTSCTS, tcflag_t{0});
    QCOMPARE(driver.wanted->c_iflag & (IXON | IXOFF), tcflag_t{0});
}

void TestQtSerialPortDriver::parameterThatTheDriverIgnoresFailsTheOpening_data()
{
    QTest::addColumn<QString>("settings");
    QTest::addColumn<tcflag_t>("alwaysOn");
    QTest::addColumn<tcflag_t>("alwaysOff");
    QTest::addColumn<QString>("reason");
    const QString parity = u"%1 no admite la paridad elegida."_s;
    const QString size = u"%1 no admite %2 bits de datos."_s;
    const QString stop = u"%1 no admite los bits de parada elegidos."_s;
    const tcflag_t none = 0;
    QTest::newRow("even for none") << u"9600,N,8,1"_s << tcflag_t{PARENB} << none << parity;
    QTest::newRow("odd for even") << u"9600,E,8,1"_s << tcflag_t{PARODD} << none << parity;
    QTest::newRow("even for odd") << u"9600,O,8,1"_s << none << tcflag_t{PARODD} << parity;
    QTest::newRow("odd for mark") << u"9600,M,8,1"_s << none << tcflag_t{CMSPAR} << parity;
    QTest::newRow("even for space") << u"9600,S,8,1"_s << none << tcflag_t{CMSPAR} << parity;
    QTest::newRow("7 bits for 8") << u"9600,N,8,1"_s << none << tcflag_t{CS8 & ~CS7}
                                  << size.arg(u"%1"_s, u"8"_s);
    QTest::newRow("8 bits for 7") << u"9600,N,7,1"_s << tcflag_t{CS8} << none
                                  << size.arg(u"%1"_s, u"7"_s);
    QTest::newRow("8 bits for 6") << u"9600,N,6,1"_s << tcflag_t{CS8} << none
                                  << size.arg(u"%1"_s, u"6"_s);
    QTest::newRow("2 stop bits for 1") << u"9600,N,8,1"_s << tcflag_t{CSTOPB} << none << stop;
    QTest::newRow("1 stop bit for 2") << u"9600,N,8,2"_s << none << tcflag_t{CSTOPB} << stop;
}

void TestQtSerialPortDriver::parameterThatTheDriverIgnoresFailsTheOpening()
{
    QFETCH(QString, settings);
    QFETCH(tcflag_t, alwaysOn);
    QFETCH(tcflag_t, alwaysOff);
    QFETCH(QString, reason);
    StandInDriver driver;
    driver.alwaysOn = alwaysOn;
    driver.alwaysOff = alwaysOff;
    PortFixture f;
    f.port.setSettings(settings);
    f.port.open();
    QVERIFY(!f.port.isOpen());
    QCOMPARE(f.port.openError(), reason.arg(f.line.device));
}

void TestQtSerialPortDriver::parameterThatTheDriverRefusesFailsTheOpening_data()
{
    QTest::addColumn<QString>("settings");
    QTest::addColumn<tcflag_t>("mask");
    QTest::addColumn<tcflag_t>("value");
    QTest::addColumn<QString>("reason");
    QTest::newRow("speed") << u"19200,N,8,1"_s << tcflag_t{CBAUD} << tcflag_t{B19200}
                           << u"%1 no admite la velocidad de 19200 bit/s."_s;
    QTest::newRow("parity") << u"9600,E,8,1"_s << tcflag_t{PARENB} << tcflag_t{PARENB}
                            << u"%1 no admite la paridad elegida."_s;
    QTest::newRow("data bits") << u"9600,N,7,1"_s << tcflag_t{CSIZE} << tcflag_t{CS7}
                               << u"%1 no admite 7 bits de datos."_s;
    QTest::newRow("stop bits") << u"9600,N,8,2"_s << tcflag_t{CSTOPB} << tcflag_t{CSTOPB}
                               << u"%1 no admite los bits de parada elegidos."_s;
}

void TestQtSerialPortDriver::parameterThatTheDriverRefusesFailsTheOpening()
{
    QFETCH(QString, settings);
    QFETCH(tcflag_t, mask);
    QFETCH(tcflag_t, value);
    QFETCH(QString, reason);
    StandInDriver driver;
    driver.refusedMask = mask;
    driver.refusedValue = value;
    PortFixture f;
    f.port.setSettings(settings);
    f.port.open();
    QVERIFY(!f.port.isOpen());
    QCOMPARE(f.port.openError(), reason.arg(f.line.device));
}

void TestQtSerialPortDriver::speedThatTheDriverChangesFailsTheOpening()
{
    StandInDriver driver;
    driver.ownSpeed = 19200;
    PortFixture f;
    f.port.open();
    QVERIFY(!f.port.isOpen());
    QCOMPARE(f.port.openError(), u"%1 no admite la velocidad de 9600 bit/s."_s.arg(f.line.device));
}

void TestQtSerialPortDriver::driverThatDoesNotTellItsParametersFailsTheOpening()
{
    StandInDriver driver;
    driver.tellsParameters = false;
    PortFixture f;
    f.port.open();
    QVERIFY(!f.port.isOpen());
    QCOMPARE(f.port.openError(), u"%1 no es un puerto serie."_s.arg(f.line.device));
}

void TestQtSerialPortDriver::readingThatFailsForTheMomentIsTriedAgain_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("interrupted") << EINTR;
    QTest::newRow("nothing there") << EAGAIN;
}

void TestQtSerialPortDriver::readingThatFailsForTheMomentIsTriedAgain()
{
    QFETCH(int, error);
    StandInDriver driver;
    PortFixture f;
    f.port.open();
    f.port.setReceiveThreshold(1);
    QVERIFY(f.line.send("x"));
    driver.nextError = error;
    QTRY_COMPARE(f.port.inputCount(), 1);
    QCOMPARE(driver.nextError, 0);
}

void TestQtSerialPortDriver::writingThatFailsForTheMomentIsTriedAgain_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QByteArray>("atOnce");
    QTest::newRow("interrupted") << EINTR << QByteArray("abc");
    QTest::newRow("no room") << EAGAIN << QByteArray();
    QTest::newRow("nothing taken") << StandInDriver::nothingTaken << QByteArray();
}

void TestQtSerialPortDriver::writingThatFailsForTheMomentIsTriedAgain()
{
    QFETCH(int, error);
    StandInDriver driver;
    PortFixture f;
    f.port.open();
    driver.nextError = error;
    f.port.write("abc");
    QByteArray received = f.line.received();
    QTEST(received, "atOnce");
    QTRY_COMPARE(received += f.line.received(), QByteArray("abc"));
    QVERIFY(f.port.isOpen());
}

void TestQtSerialPortDriver::driverThatTakesNothingOfWhatWaitsIsNoReasonToClose()
{
    StandInDriver driver;
    PortFixture f;
    f.port.open();
    driver.nextError = EAGAIN;
    f.port.write("abc");
    driver.nextError = StandInDriver::nothingTaken;
    QTRY_COMPARE(driver.nextError, 0);
    QByteArray received;
    QTRY_COMPARE(received += f.line.received(), QByteArray("abc"));
    QVERIFY(f.port.isOpen());
}

void TestQtSerialPortDriver::restIsAsLongAsTheMissingBytes_data()
{
    QTest::addColumn<QString>("settings");
    QTest::addColumn<int>("missing");
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("10 bits a byte") << u"9600,N,8,1"_s << 11 << 10;
    QTest::newRow("11 with a stop bit more") << u"9600,N,8,2"_s << 11 << 11;
    QTest::newRow("11 with parity") << u"9600,E,8,1"_s << 11 << 11;
    QTest::newRow("12 bits") << u"9600,O,8,2"_s << 11 << 12;
    QTest::newRow("9 bits") << u"9600,N,7,1"_s << 11 << 9;
    QTest::newRow("slower") << u"4800,N,8,1"_s << 9 << 17;
    QTest::newRow("longest") << u"9600,N,8,1"_s << 500 << 120;
    QTest::newRow("few") << u"9600,N,8,1"_s << 3 << 2;
    QTest::newRow("shortest") << u"9600,N,8,1"_s << 2 << 1;
    QTest::newRow("none on a fast line") << u"115200,N,8,1"_s << 3 << 0;
    QTest::newRow("one is slept through without events") << u"9600,N,8,1"_s << 1 << 0;
}

void TestQtSerialPortDriver::restIsAsLongAsTheMissingBytes()
{
    QFETCH(QString, settings);
    QFETCH(int, missing);
    StandInDriver driver;
    PortFixture f;
    f.port.setSettings(settings);
    f.port.open();
    QVERIFY2(f.port.isOpen(), qPrintable(f.port.openError()));
    f.port.setReceiveThreshold(1 + missing);
    QVERIFY(f.line.send("x"));
    QTRY_COMPARE(f.port.inputCount(), 1);
    const auto* rest = f.port.findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(rest);
    QTEST(rest->interval(), "milliseconds");
}

void TestQtSerialPortDriver::bytesFasterThanTheLineAreNotRestedFor()
{
    PortFixture f;
    f.port.setSettings(u"110,N,8,1"_s);
    f.port.open();
    f.port.setReceiveThreshold(500);
    const auto* rest = f.port.findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(rest);
    f.port.write("?");
    // They need 17 seconds on such a line.
    QVERIFY(f.line.send(QByteArray(200, 'x')));
    QTRY_COMPARE(f.port.inputCount(), 200);
    QVERIFY(!rest->isActive());
}

void TestQtSerialPortDriver::closingEndsTheRest()
{
    PortFixture f;
    f.port.open();
    f.port.setReceiveThreshold(500);
    const auto* rest = f.port.findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(rest);
    QVERIFY(f.line.send("x"));
    QVERIFY(f.line.waitUntilWithDriver(1));
    QTRY_COMPARE(f.port.inputCount(), 1);
    f.port.close();
    QVERIFY(!rest->isActive());
}

QTEST_GUILESS_MAIN(TestQtSerialPortDriver)
#include "TestQtSerialPortDriver.moc"
