#include "NetworkFarEnd.h"
#include "NetworkSerialPort.h"

#include <QSignalSpy>
#include <QTimer>

using namespace Qt::StringLiterals;

/// How a port at the far end of a network does not open, and what is told of it.
class TestNetworkOpening : public QObject {
    Q_OBJECT
private slots:
    void wrongAddressIsTold();
    void wrongSettingsAreTold();
    void fourDataBitsAreRefused();
    void nobodyListening();
    void unknownName();
    void silentAddress();
    void addressThatTheSystemRefusesAtOnce();
    void farEndThatAcceptsLateAndSaysNothing();
    void farEndWithoutRfc2217();
    void farEndThatSaysNothingOfRfc2217();
    void farEndThatConfirmsNothing();
    void refusedSpeed();
    void connectionCutAtEachByte();
    void textInPlaceOfTheNegotiationIsCut();
    void eventsRunMeanwhile();
    void closingEndsIt();
    void closingAsSoonAsItIsToldEndsIt();
    void endOfTheProgramEndsIt();
    void secondOpeningDoesNothing();
    void bytesFromBeforeAreNoData();
    void timeOfAnEarlierOpeningDoesNotCount();

private:
    /// The reason, with "URL" in place of the device.
    static QString failureOf(const QString& device, const QString& settings = u"9600,N,8,1"_s)
    {
        NetworkSerialPort port(device);
        port.setSettings(settings);
        QSignalSpy lost(&port, &SerialPort::lost);
        port.open();
        if (port.isOpen() || port.isOpening() || lost.count() > 0)
            return u"open"_s;
        return QString(port.openError()).replace(device, u"URL"_s);
    }
};

void TestNetworkOpening::wrongAddressIsTold()
{
    QCOMPARE(failureOf(u"tcp://reloj"_s), u"\"URL\" no es una dirección de red: escriba "
                                          "tcp://EQUIPO:PUERTO o rfc2217://EQUIPO:PUERTO."_s);
}

void TestNetworkOpening::wrongSettingsAreTold()
{
    const NetworkFarEnd farEnd;
    QCOMPARE(failureOf(farEnd.raw(), u"0,N,8,1"_s), u"Velocidad no válida: \"0\"."_s);
}

void TestNetworkOpening::fourDataBitsAreRefused()
{
    const NetworkFarEnd farEnd;
    QCOMPARE(failureOf(farEnd.rfc2217(), u"9600,N,4,1"_s), u"URL no admite 4 bits de datos."_s);
    QCOMPARE(farEnd.connections, 0);
}

void TestNetworkOpening::nobodyListening()
{
    NetworkFarEnd farEnd;
    const QString device = farEnd.raw();
    farEnd.stopListening();
    QCOMPARE(failureOf(device),
             u"URL: conexión rechazada, compruebe la dirección y que el equipo está preparado."_s);
}

void TestNetworkOpening::unknownName()
{
    QCOMPARE(failureOf(u"tcp://no-such-host.invalid:4001"_s),
             u"URL: no se encuentra el equipo, compruebe su nombre."_s);
}

void TestNetworkOpening::silentAddress()
{
    // One connection waits to be accepted; for more there is no room, and nobody accepts.
    QTcpServer full;
    full.setListenBacklogSize(0);
    QVERIFY(full.listen(QHostAddress::LocalHost));
    full.pauseAccepting();
    QTcpSocket first;
    first.connectToHost(u"127.0.0.1"_s, full.serverPort());
    QVERIFY(first.waitForConnected());
    QElapsedTimer elapsed;
    elapsed.start();
    QCOMPARE(failureOf(u"tcp://127.0.0.1:%1"_s.arg(full.serverPort())),
             u"URL no contesta: compruebe la dirección y la red."_s);
    // The socket itself would go on for half a minute.
    QVERIFY(elapsed.elapsed() < 20000);
}

void TestNetworkOpening::addressThatTheSystemRefusesAtOnce()
{
#ifdef Q_OS_LINUX
    // No connection leads to a group. The socket tells so before the event loop runs.
    QCOMPARE(failureOf(u"tcp://224.0.0.1:4001"_s),
             u"URL no contesta: compruebe la dirección y la red."_s);
#else
    QSKIP("Another system may tell it later, or in other words");
#endif
}

/// Accepts after some of the five seconds, so that it does not have the whole three for the
/// options.
void TestNetworkOpening::farEndThatAcceptsLateAndSaysNothing()
{
    QTcpServer full;
    full.setListenBacklogSize(0);
    QVERIFY(full.listen(QHostAddress::LocalHost));
    full.pauseAccepting();
    QTcpSocket first;
    first.connectToHost(u"127.0.0.1"_s, full.serverPort());
    QVERIFY(first.waitForConnected());
    // The system asks again after 1 and after 3 s.
    QTimer::singleShot(2500, &full, &QTcpServer::resumeAccepting);
    QCOMPARE(failureOf(u"rfc2217://127.0.0.1:%1"_s.arg(full.serverPort())),
             u"URL no contesta: compruebe la dirección y la red."_s);
}

void TestNetworkOpening::farEndWithoutRfc2217()
{
    NetworkFarEnd farEnd;
    farEnd.greeting = QByteArray::fromHex("fffd00fffb00fffe2c");
    QCOMPARE(failureOf(farEnd.rfc2217()), u"URL no admite RFC 2217."_s);
}

void TestNetworkOpening::farEndThatSaysNothingOfRfc2217()
{
    NetworkFarEnd farEnd;
    farEnd.greeting = "login: ";
    QElapsedTimer elapsed;
    elapsed.start();
    QCOMPARE(failureOf(farEnd.rfc2217()), u"URL no admite RFC 2217."_s);
    QVERIFY(elapsed.elapsed() > 2700);
}

void TestNetworkOpening::farEndThatConfirmsNothing()
{
    NetworkFarEnd farEnd;
    farEnd.greeting = QByteArray::fromHex("fffd00fffb00fffd2c");
    QCOMPARE(failureOf(farEnd.rfc2217()), u"URL no confirma los parámetros 9600,N,8,1."_s);
}

void TestNetworkOpening::refusedSpeed()
{
    NetworkFarEnd farEnd;
    farEnd.greeting = NetworkFarEnd::agreement();
    QCOMPARE(failureOf(farEnd.rfc2217(), u"115200,N,8,1"_s),
             u"URL no admite la velocidad de 115200 bit/s."_s);
}

void TestNetworkOpening::connectionCutAtEachByte()
{
    const QByteArray whole = NetworkFarEnd::agreement();
    for (qsizetype sent = 0; sent < whole.size(); ++sent) {
        NetworkFarEnd farEnd;
        farEnd.greeting = whole.first(sent);
        farEnd.closesAfterGreeting = true;
        QCOMPARE(failureOf(farEnd.rfc2217()),
                 u"URL ha cortado la conexión: quizá lo usa otro equipo."_s);
    }
}

void TestNetworkOpening::textInPlaceOfTheNegotiationIsCut()
{
    NetworkFarEnd farEnd;
    farEnd.greeting = "Port already in use\r\n";
    farEnd.closesAfterGreeting = true;
    QCOMPARE(failureOf(farEnd.rfc2217()),
             u"URL ha cortado la conexión: quizá lo usa otro equipo."_s);
}

void TestNetworkOpening::eventsRunMeanwhile()
{
    NetworkFarEnd farEnd;
    farEnd.greeting = QByteArray::fromHex("fffd00fffb00");
    NetworkSerialPort port(farEnd.rfc2217());
    QList<bool> opening;
    connect(&port, &SerialPort::openingChanged, this, [&] { opening += port.isOpening(); });
    int ticks = 0;
    QTimer tick;
    connect(&tick, &QTimer::timeout, this, [&] {
        if (++ticks == 5)
            farEnd.send(NetworkFarEnd::agreement());
    });
    tick.start(1);
    port.open();
    QVERIFY(port.isOpen());
    QVERIFY(ticks >= 5);
    QCOMPARE(opening, (QList<bool>{true, false}));
}

void TestNetworkOpening::closingEndsIt()
{
    NetworkFarEnd farEnd;
    NetworkSerialPort port(farEnd.rfc2217());
    QSignalSpy lost(&port, &SerialPort::lost);
    QTimer::singleShot(20, &port, &SerialPort::close);
    port.open();
    QVERIFY(!port.isOpen());
    QVERIFY(!port.isOpening());
    QCOMPARE(port.openError(), QString());
    QCOMPARE(lost.count(), 0);
}

void TestNetworkOpening::closingAsSoonAsItIsToldEndsIt()
{
    NetworkFarEnd farEnd;
    NetworkSerialPort port(farEnd.rfc2217());
    connect(&port, &SerialPort::openingChanged, &port, &SerialPort::close);
    port.open();
    QVERIFY(!port.isOpen());
    QVERIFY(!port.isOpening());
    // The end of its time would have left a reason.
    QCOMPARE(port.openError(), QString());
}

void TestNetworkOpening::endOfTheProgramEndsIt()
{
    NetworkFarEnd farEnd;
    NetworkSerialPort port(farEnd.rfc2217());
    QTimer::singleShot(0, &port, &SerialPort::open);
    QTimer::singleShot(20, &port, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
    QVERIFY(!port.isOpen());
    QCOMPARE(port.openError(), QString());
}

void TestNetworkOpening::secondOpeningDoesNothing()
{
    NetworkFarEnd farEnd;
    NetworkSerialPort port(farEnd.rfc2217());
    QTimer::singleShot(20, &port, [&] {
        port.open();
        farEnd.send(NetworkFarEnd::agreement());
    });
    port.open();
    QVERIFY(port.isOpen());
    QCOMPARE(farEnd.connections, 1);
}

void TestNetworkOpening::bytesFromBeforeAreNoData()
{
    NetworkFarEnd farEnd;
    farEnd.greeting = "welcome" + NetworkFarEnd::agreement();
    NetworkSerialPort port(farEnd.rfc2217());
    port.open();
    farEnd.send("data");
    QVERIFY(QTest::qWaitFor([&] { return port.inputCount() >= 4; }, 30000));
    QCOMPARE(port.read(), QByteArray("data"));
}

void TestNetworkOpening::timeOfAnEarlierOpeningDoesNotCount()
{
    NetworkFarEnd farEnd;
    NetworkSerialPort port(farEnd.rfc2217());
    // In an event loop, as in the program, where what is left of the first opening lives on.
    QTimer::singleShot(0, &port, [&] {
        QTimer::singleShot(2500, &port, &SerialPort::close);
        port.open();
        QTimer::singleShot(1000, &port, [&] { farEnd.send(NetworkFarEnd::agreement()); });
        port.open();
        QCoreApplication::exit();
    });
    QCoreApplication::exec();
    QCOMPARE(port.openError(), QString());
    QVERIFY(port.isOpen());
}

QTEST_GUILESS_MAIN(TestNetworkOpening)
#include "TestNetworkOpening.moc"
