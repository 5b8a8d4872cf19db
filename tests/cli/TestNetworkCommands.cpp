#include "Files.h"
#include "HctctlProcess.h"
#include "HexText.h"
#include "Ser2net.h"
#include "SimulatorProcess.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int firmwareLines = 200;

/// Lines of 16 bytes, among them 0xFF.
QByteArray firmware(int lines)
{
    QByteArray text;
    for (int line = 0; line < lines; ++line) {
        QByteArray data;
        for (int byte = 0; byte < 16; ++byte)
            data.append(static_cast<char>(line * 16 + byte));
        text += record(0, static_cast<quint16>(line * 16), data) + "\r\n";
    }
    return text + ":00000001FF\r\n";
}

/// A simulated clock behind ser2net, as the row of the test wants it.
struct NetworkClock {
    static QStringList options()
    {
        QFETCH(QString, model);
        return {u"--model"_s, model,        u"--programme"_s,
                u"school"_s,  u"--start"_s, u"2026-11-21T16:06:36"_s,
                u"--frozen"_s};
    }
    static Ser2net::Protocol protocol()
    {
        QFETCH(Ser2net::Protocol, protocol);
        return protocol;
    }
    QStringList arguments(const QStringList& words) const
    {
        return QStringList{u"--port"_s, server.address(), u"--quiet"_s} + words;
    }
    int run(const QStringList& words) { return hctctl.run(arguments(words)); }
    QString path(const QString& name) const { return folder.filePath(name); }

    SimulatorProcess clock{options()};
    Ser2net server{clock.device(), protocol()};
    QTemporaryDir folder;
    HctctlProcess hctctl;
};

void addRows()
{
    QTest::addColumn<Ser2net::Protocol>("protocol");
    QTest::addColumn<QString>("model");
    for (const char* model : {"7200", "7300"}) {
        QTest::addRow("raw, HCT-%s", model) << Ser2net::Protocol::Raw << QString::fromLatin1(model);
        QTest::addRow("RFC 2217, HCT-%s", model)
            << Ser2net::Protocol::Rfc2217 << QString::fromLatin1(model);
    }
}

} // namespace

/// The commands with a simulated clock behind ser2net.
class TestNetworkCommands : public QObject {
    Q_OBJECT
private slots:
    void stateIsWatched_data() { addRows(); }
    void stateIsWatched();
    void clockIsSet_data() { addRows(); }
    void clockIsSet();
    void programmeIsReadAndWritten_data() { addRows(); }
    void programmeIsReadAndWritten();
    void firmwareIsSent_data() { addRows(); }
    void firmwareIsSent();
    void serverKilledInMidTransferIsALostPort_data() { addRows(); }
    void serverKilledInMidTransferIsALostPort();
    void secondUserIsRefused_data() { addRows(); }
    void secondUserIsRefused();
    void interruptionEndsAnOpeningAtOnce();
    void waitBeginsWhenThePortIsOpen();
    void slowNetworkDisturbsNothing_data();
    void slowNetworkDisturbsNothing();
};

void TestNetworkCommands::stateIsWatched()
{
    NetworkClock s;
    s.hctctl.start(s.arguments({u"status"_s, u"--watch"_s, u"--json"_s}));
    QVERIFY(s.hctctl.nextLine().contains(u"\"time\":\"2026-11-21T16:06:36\""_s));
    s.clock.command(u"time 2026-11-21T17:00:00"_s);
    QVERIFY(s.hctctl.nextLine().contains(u"\"time\":\"2026-11-21T17:00:00\""_s));
    s.hctctl.interrupt();
    QCOMPARE(s.hctctl.exitStatus(), 0);
}

void TestNetworkCommands::clockIsSet()
{
    NetworkClock s;
    QCOMPARE(s.run({u"clock"_s, u"set"_s, u"--at"_s, u"2027-01-02T03:04:05"_s}), 0);
    QCOMPARE(s.clock.state(u"time"_s), u"2027-01-02T03:04:05"_s);
}

void TestNetworkCommands::programmeIsReadAndWritten()
{
    NetworkClock s;
    const QString path = s.path(u"a.hct"_s);
    QCOMPARE(s.run({u"programme"_s, u"read"_s, path}), 0);
    s.clock.command(u"save "_s + s.path(u"school.hct"_s));
    QByteArray text = contentsOf(s.path(u"school.hct"_s));
    QCOMPARE(contentsOf(path), text);
    text.replace("8\r\n0\r\n9\r\n0\r\n31\r\n", "8\r\n0\r\n8\r\n59\r\n3\r\n");
    writeFile(path, text);
    QCOMPARE(s.run({u"programme"_s, u"write"_s, path}), 0);
    s.clock.command(u"save "_s + s.path(u"new.hct"_s));
    QCOMPARE(contentsOf(s.path(u"new.hct"_s)), text);
}

void TestNetworkCommands::firmwareIsSent()
{
    NetworkClock s;
    const QString path = writeFile(s.path(u"a.hex"_s), firmware(firmwareLines));
    QCOMPARE(s.run({u"firmware"_s, u"send"_s, u"--yes"_s, path}), 0);
    QCOMPARE(s.clock.state(u"firmware.lines"_s), QString::number(firmwareLines));
    s.clock.command(u"firmware binary "_s + s.path(u"a.bin"_s));
    QByteArray image;
    for (int byte = 0; byte < firmwareLines * 16; ++byte)
        image.append(static_cast<char>(byte));
    QVERIFY(contentsOf(s.path(u"a.bin"_s)) == image);
}

void TestNetworkCommands::serverKilledInMidTransferIsALostPort()
{
    NetworkClock s;
    s.clock.command(u"trace on"_s);
    const QString path = writeFile(s.path(u"a.hex"_s), firmware(firmwareLines).repeated(20));
    s.hctctl.start(s.arguments({u"firmware"_s, u"send"_s, u"--yes"_s, path}));
    QVERIFY(s.clock.waitForRequests(u"69 dd"_s, 20));
    s.server.kill();
    QCOMPARE(s.hctctl.exitStatus(), 3);
    // What the clock has of the firmware follows.
    QVERIFY(s.hctctl.errors().startsWith(
        u"Se ha perdido el puerto %1: compruebe la red y repita la orden."_s.arg(
            s.server.address())));
    s.server.start();
    QCOMPARE(s.run({u"status"_s}), 0);
}

void TestNetworkCommands::secondUserIsRefused()
{
    NetworkClock s;
    s.hctctl.start(s.arguments({u"status"_s, u"--watch"_s}));
    QVERIFY(!s.hctctl.nextLine().isEmpty());
    HctctlProcess second;
    QCOMPARE(second.run(s.arguments({u"status"_s})), 3);
    // Who connects without RFC 2217 is accepted, and only then cut off.
    QVERIFY(second.errors().startsWith(NetworkClock::protocol() == Ser2net::Protocol::Raw
                                           ? u"Se ha perdido el puerto "_s + s.server.address()
                                           : s.server.address() + u" ha cortado la conexión"_s));
}

void TestNetworkCommands::interruptionEndsAnOpeningAtOnce()
{
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    HctctlProcess hctctl;
    hctctl.start({u"status"_s, u"--port"_s, u"rfc2217://127.0.0.1:%1"_s.arg(silent.serverPort())});
    QVERIFY(silent.waitForNewConnection(processPatience));
    hctctl.interrupt();
    QCOMPARE(hctctl.exitStatus(), 130);
    QVERIFY(hctctl.errors().startsWith(u"Interrumpido"_s));
}

void TestNetworkCommands::waitBeginsWhenThePortIsOpen()
{
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    const QString address = u"rfc2217://127.0.0.1:%1"_s.arg(silent.serverPort());
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"status"_s, u"--wait"_s, u"1"_s, u"--port"_s, address}), 3);
    QVERIFY(hctctl.errors().startsWith(address + u" no admite RFC 2217."_s));
}

void TestNetworkCommands::slowNetworkDisturbsNothing_data()
{
    QTest::addColumn<Ser2net::Protocol>("protocol");
    QTest::addColumn<QString>("model");
    QTest::newRow("raw, HCT-7300") << Ser2net::Protocol::Raw << u"7300"_s;
    QTest::newRow("RFC 2217, HCT-7200") << Ser2net::Protocol::Rfc2217 << u"7200"_s;
}

void TestNetworkCommands::slowNetworkDisturbsNothing()
{
    NetworkClock s;
    const SlowNetwork network(QStringLiteral(NETWORK_RELAY), s.server, 300);
    // The exit status, and what is told of answers that come too late.
    const auto run = [&s, &network](const QStringList& words) {
        const int status =
            s.hctctl.run(QStringList{u"--port"_s, network.address(), u"--quiet"_s} + words);
        return QString::number(status) + s.hctctl.errors();
    };
    QCOMPARE(run({u"status"_s}), u"0"_s);
    QCOMPARE(run({u"clock"_s, u"set"_s, u"--at"_s, u"2027-01-02T03:04:05"_s}), u"0"_s);
    QCOMPARE(s.clock.state(u"time"_s), u"2027-01-02T03:04:05"_s);
    QCOMPARE(run({u"outputs"_s, u"auto"_s}), u"0"_s);
    const QString path = s.path(u"a.hct"_s);
    QCOMPARE(run({u"programme"_s, u"read"_s, path}), u"0"_s);
    QCOMPARE(run({u"programme"_s, u"write"_s, path}), u"0"_s);
    const QString hexFile = writeFile(s.path(u"a.hex"_s), firmware(5));
    QCOMPARE(run({u"firmware"_s, u"send"_s, u"--yes"_s, hexFile}), u"0"_s);
    QCOMPARE(s.clock.state(u"firmware.lines"_s), u"5"_s);
}

QTEST_GUILESS_MAIN(TestNetworkCommands)
#include "TestNetworkCommands.moc"
