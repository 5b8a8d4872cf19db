#include "ConnectedProgram.h"
#include "LogText.h"
#include "MessageLink.h"
#include "NetworkSerialPort.h"
#include "Ser2net.h"
#include "SerialPort.h"
#include "frmPortoSerie.h"
#include "frmSincronizacionReloxo.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <qpa/qwindowsysteminterface.h>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// The program, ser2net, and the simulated clock behind it.
struct NetworkDesk {
    explicit NetworkDesk(Ser2net::Protocol protocol, const QStringList& options = {})
        : run(options, [this, protocol](const QString& device) {
              server = std::make_unique<Ser2net>(device, protocol);
              return server->address();
          })
    {}

    SerialPort& port() { return run.system.environment().commSerie; }
    /// Settings of the line as the operator has saved them.
    void setLine(const QString& speed, const QString& stopBits)
    {
        CommSettings& settings = run.program.session().settings();
        settings.directSpeed = speed;
        settings.directStopBits = stopBits;
        run.program.session().link().ApplySettings();
    }

    std::unique_ptr<Ser2net> server;
    ConnectedProgram run;
};

/// The parameters of a terminal, as its driver has them.
termios parametersOf(const QString& device)
{
    termios parameters{};
    const int descriptor = ::open(device.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    ::tcgetattr(descriptor, &parameters);
    ::close(descriptor);
    return parameters;
}

/// Counts the paintings of a window while the link opens a port.
class PaintingWatch final : public QObject {
public:
    PaintingWatch(QWidget& window, const MessageLink& link) : m_link(link)
    {
        window.installEventFilter(this);
    }
    int paintings = 0;

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && m_link.isStarting())
            ++paintings;
        return false;
    }

private:
    const MessageLink& m_link;
};

/// As the window system tells a click in the middle of a window: it waits for the event loop.
void clickOnScreen(QWidget& window)
{
    const QPointF place = window.rect().center();
    const QPointF onScreen = window.mapToGlobal(place);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
        QWindowSystemInterface::handleMouseEvent(
            window.windowHandle(), place, onScreen,
            type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton, type);
}

/// As the window system tells that the button in the title bar was clicked.
void closeOnScreen(QWidget& window)
{
    QWindowSystemInterface::handleCloseEvent(window.windowHandle());
}

void addProtocols()
{
    QTest::addColumn<Ser2net::Protocol>("protocol");
    QTest::newRow("raw") << Ser2net::Protocol::Raw;
    QTest::newRow("RFC 2217") << Ser2net::Protocol::Rfc2217;
}

} // namespace

/// The program and a simulated clock behind ser2net, used as an operator does.
class TestNetworkClock : public QObject {
    Q_OBJECT
private slots:
    void connectsAndShowsWhatTheClockTells_data();
    void connectsAndShowsWhatTheClockTells();
    void toolTipsTellTheAddress();
    void parametersReachTheLine();
    void serverThatIsKilledIsALostPort_data();
    void serverThatIsKilledIsALostPort();
    void secondUserIsRefused();
    void windowIsPaintedWhileThePortOpens();
    void clicksWhileThePortOpensAreLost();
    void closingTheWindowWhileThePortOpensEndsTheProgram();
    void closingTheSettingsWhileThePortOpensEndsTheOpening();
};

void TestNetworkClock::connectsAndShowsWhatTheClockTells_data()
{
    QTest::addColumn<Ser2net::Protocol>("protocol");
    QTest::addColumn<QString>("model");
    for (const char* model : {"7200", "7300"}) {
        QTest::addRow("raw, HCT-%s", model) << Ser2net::Protocol::Raw << QString::fromLatin1(model);
        QTest::addRow("RFC 2217, HCT-%s", model)
            << Ser2net::Protocol::Rfc2217 << QString::fromLatin1(model);
    }
}

void TestNetworkClock::connectsAndShowsWhatTheClockTells()
{
    QFETCH(Ser2net::Protocol, protocol);
    QFETCH(QString, model);
    NetworkDesk s(protocol,
                  {u"--model"_s, model, u"--start"_s, u"2026-11-20T08:59:00"_s, u"--frozen"_s});
    QVERIFY(s.run.connectToClock());
    QCOMPARE(s.run.panel(2), u"Equipo: HCT"_s + model);
    QCOMPARE(s.run.panel(3), u"COM1,9600,N,8,1"_s);
    QCOMPARE(s.run.logLines(),
             (QStringList{u"Conexión interrumpida"_s, u"Estableciendo conexión..."_s,
                          u"Identificación aceptada"_s, u"Conexión establecida"_s}));
    s.run.choose("mnuInformacion");
    const QByteArray window = "frmInfoHCT" + model.toLatin1();
    QTRY_COMPARE_WITH_TIMEOUT(s.run.text(window.constData(), "lblHora").trimmed(), u"8:59:00"_s,
                              patience);
    s.run.clock.command(u"time 2026-11-20T09:00:00"_s);
    QTRY_COMPARE_WITH_TIMEOUT(s.run.text(window.constData(), "lblHora").trimmed(), u"9:00:00"_s,
                              patience);
}

void TestNetworkClock::toolTipsTellTheAddress()
{
    NetworkDesk s(Ser2net::Protocol::Rfc2217);
    QVERIFY(s.run.connectToClock());
    const auto* panel = s.run.program.mainWindow().findChild<QLabel*>(u"stbBarra(3)"_s);
    QVERIFY(panel->toolTip().contains(s.server->address()));
    s.run.choose("mnuDesconectar");
    s.run.choose("mnuConfiguracion");
    const auto* channels = s.run.program.mainWindow().findChild<QComboBox*>(u"cbbCanal"_s);
    QVERIFY(channels->itemData(0, Qt::ToolTipRole).toString().contains(s.server->address()));
}

void TestNetworkClock::parametersReachTheLine()
{
    NetworkDesk s(Ser2net::Protocol::Rfc2217);
    QVERIFY(s.run.connectToClock());
    const QString device = s.run.clock.device();
    const termios before = parametersOf(device);
    QCOMPARE(::cfgetospeed(&before), speed_t(B9600));
    QCOMPARE(before.c_cflag & CSTOPB, tcflag_t(0));
    s.run.choose("mnuDesconectar");
    s.setLine(u"19200"_s, u"2"_s);
    QVERIFY(s.run.connectToClock());
    const termios parameters = parametersOf(device);
    QCOMPARE(::cfgetospeed(&parameters), speed_t(B19200));
    QCOMPARE(parameters.c_cflag & CSTOPB, tcflag_t(CSTOPB));
    QCOMPARE(s.run.panel(3), u"COM1,19200,N,8,2"_s);
}

void TestNetworkClock::serverThatIsKilledIsALostPort_data() { addProtocols(); }

void TestNetworkClock::serverThatIsKilledIsALostPort()
{
    QFETCH(Ser2net::Protocol, protocol);
    NetworkDesk s(protocol);
    QVERIFY(s.run.connectToClock());
    QSignalSpy lost(&s.port(), &SerialPort::lost);
    // In the midst of an exchange: there is one nearly all the time.
    s.server->kill();
    QVERIFY(lost.wait(patience));
    QTRY_COMPARE_WITH_TIMEOUT(s.run.panel(1), u"Desconectado"_s, patience);
    QVERIFY(!s.port().isOpen());
    QCOMPARE(lost.count(), 1);

    s.run.choose("mnuConectar");
    QCOMPARE(s.port().openError(), s.server->address() +
                                       u": conexión rechazada, compruebe la dirección y que el "
                                       "equipo está preparado."_s);
    QTRY_COMPARE_WITH_TIMEOUT(s.run.timesLogged(u"Conexión interrumpida"_s), 3, patience);
    s.server->start();
    QVERIFY(s.run.connectToClock());
}

void TestNetworkClock::secondUserIsRefused()
{
    NetworkDesk s(Ser2net::Protocol::Rfc2217);
    QVERIFY(s.run.connectToClock());
    SystemEnvironment second;
    SerialPort& port = second.environment().commSerie;
    port.open();
    QVERIFY(!port.isOpen());
    QCOMPARE(port.openError(),
             s.server->address() + u" ha cortado la conexión: quizá lo usa otro equipo."_s);
    QVERIFY(s.run.isEstablished());
}

void TestNetworkClock::windowIsPaintedWhileThePortOpens()
{
    // Accepts, and says nothing for the three seconds that it is given.
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    ConnectedProgram run({}, [&silent](const QString& /*device*/) {
        return u"rfc2217://127.0.0.1:%1"_s.arg(silent.serverPort());
    });
    auto& window = run.program.mainWindow();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const PaintingWatch watch(window, run.program.session().link());
    QTimer::singleShot(200, &window, [&] {
        window.update();
        // The operator's second choice while the first is under way.
        run.choose("mnuConectar");
    });
    run.choose("mnuConectar");
    QVERIFY(watch.paintings > 0);
    QCOMPARE(run.timesLogged(u"Estableciendo conexión..."_s), 1);
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(u"Conexión interrumpida"_s), 2, patience);
    QCOMPARE(run.timesLogged(u"Fallo en identificación del equipo"_s), 4);
}

void TestNetworkClock::clicksWhileThePortOpensAreLost()
{
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    QSignalSpy connections(&silent, &QTcpServer::newConnection);
    NetworkSerialPort port(u"rfc2217://127.0.0.1:%1"_s.arg(silent.serverPort()));
    QPushButton button(u"Conectar"_s);
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    QSignalSpy clicks(&button, &QPushButton::clicked);
    connect(&button, &QPushButton::clicked, &port, &SerialPort::open);
    QTimer::singleShot(200, &button, [&] {
        clickOnScreen(button);
        clickOnScreen(button);
    });
    clickOnScreen(button);
    QVERIFY(clicks.wait(patience));
    QCOMPARE(port.openError(), port.deviceName() + u" no admite RFC 2217."_s);
    // The next one arrives, and none before it.
    button.disconnect(&port);
    clickOnScreen(button);
    QVERIFY(clicks.wait(patience));
    QCoreApplication::processEvents();
    QCOMPARE(clicks.count(), 2);
    QCOMPARE(connections.count(), 1);
}

void TestNetworkClock::closingTheWindowWhileThePortOpensEndsTheProgram()
{
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    ConnectedProgram run({}, [&silent](const QString& /*device*/) {
        return u"rfc2217://127.0.0.1:%1"_s.arg(silent.serverPort());
    });
    auto& window = run.program.mainWindow();
    QSignalSpy unloaded(&window, &frmPrincipal::unloaded);
    QTimer::singleShot(200, &window, [&] { closeOnScreen(window); });
    run.choose("mnuConectar");
    // The end of its time would have left a reason.
    QCOMPARE(run.system.environment().commSerie.openError(), QString());
    QCOMPARE(unloaded.count(), 1);
    QCOMPARE(run.timesLogged(u"Estableciendo conexión..."_s), 0);
}

void TestNetworkClock::closingTheSettingsWhileThePortOpensEndsTheOpening()
{
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    ConnectedProgram run({}, [&silent](const QString& /*device*/) {
        return u"rfc2217://127.0.0.1:%1"_s.arg(silent.serverPort());
    });
    run.program.session().settings().modemPort = u"0"_s;
    run.program.session().link().ApplySettings();
    run.choose("mnuConfiguracion");
    auto& settings = run.program.communications();
    QVERIFY(QTest::qWaitForWindowExposed(&settings));
    QTimer::singleShot(200, &settings, [&] { closeOnScreen(settings); });
    settings.findChild<QPushButton*>(u"cmdComprobarPIN"_s)->click();
    QCOMPARE(run.system.environment().commModem.openError(), QString());
    QVERIFY(!settings.isVisible());
    QVERIFY(run.program.mainWindow().isVisible());
}

QTEST_MAIN(TestNetworkClock)
#include "TestNetworkClock.moc"
