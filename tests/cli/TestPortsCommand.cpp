#include "HctctlProcess.h"
#include "SettingsOfItsOwn.h"
#include "SimulatorProcess.h"

#include <QScopeGuard>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// `hctctl ports`. COM15 is a device that the environment names; others are those of the machine.
class TestPortsCommand : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { qunsetenv("HCT_COM15"); }

    void freePortIsListed();
    void portInUseIsListed();
    void portThatIsOpenWithoutALockIsInUse();
    void missingDeviceIsListed();
    void portsAreATable();
    void portOfTheNetworkIsListed();
    void wrongAddressIsListedAsMissing();
    void numberIsMadeAPortOfTheNetwork();
    void numberIsMadeADevice();
    void nameIsTakenAway();
    void nameThatCannotBeSavedIsTold();
    void nameWithLettersThatTheSettingsLackIsRefused();
    void givenPortComesBeforeTheName();

private:
    static QString objectOf(const QString& device, const QString& state);
};

QString TestPortsCommand::objectOf(const QString& device, const QString& state)
{
    return uR"({"description":"","device":"%1","manufacturer":"","port":"COM15",)"
           R"("serialNumber":"","state":"%2"})"_s.arg(device, state);
}

void TestPortsCommand::freePortIsListed()
{
    const SimulatorProcess clock;
    qputenv("HCT_COM15", clock.device().toUtf8());
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"ports"_s, u"--json"_s}), 0);
    const QString output = hctctl.output();
    QVERIFY(output.startsWith(u"{\"ports\":["_s));
    QVERIFY2(output.contains(objectOf(clock.device(), u"free"_s)), qPrintable(output));
    QCOMPARE(readByAnotherProgram(output) + u'\n', output);
    QCOMPARE(hctctl.errors(), QString());
}

void TestPortsCommand::portInUseIsListed()
{
    const SimulatorProcess clock;
    HctctlProcess other;
    other.start({u"status"_s, u"--watch"_s, u"--port"_s, clock.device()});
    QVERIFY(!other.nextLine().isEmpty());
    qputenv("HCT_COM15", clock.device().toUtf8());
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"ports"_s, u"--json"_s}), 0);
    const QString output = hctctl.output();
    QVERIFY2(output.contains(objectOf(clock.device(), u"inUse"_s)), qPrintable(output));
}

void TestPortsCommand::portThatIsOpenWithoutALockIsInUse()
{
    const SimulatorProcess clock;
    const int other = ::open(clock.device().toUtf8().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    QVERIFY(other >= 0);
    const auto closing = qScopeGuard([other] { ::close(other); });
    qputenv("HCT_COM15", clock.device().toUtf8());
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"ports"_s, u"--json"_s}), 0);
    const QString output = hctctl.output();
    QVERIFY2(output.contains(objectOf(clock.device(), u"inUse"_s)), qPrintable(output));
}

void TestPortsCommand::missingDeviceIsListed()
{
    qputenv("HCT_COM15", "/dev/none");
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"ports"_s, u"--json"_s}), 0);
    QVERIFY(hctctl.output().contains(objectOf(u"/dev/none"_s, u"missing"_s)));
}

void TestPortsCommand::portsAreATable()
{
    qputenv("HCT_COM15", "/dev/none-of-that-name");
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"ports"_s}), 0);
    const QStringList lines = hctctl.output().split(u'\n');
    QCOMPARE(lines.first(), u"Puerto  Dispositivo             Estado     Descripción  Fabricante  "
                            "Número de serie"_s);
    QVERIFY(lines.contains(u"COM15   /dev/none-of-that-name  no existe"_s));
}

void TestPortsCommand::portOfTheNetworkIsListed()
{
    qputenv("HCT_COM15", "tcp://192.168.1.20:4001");
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"ports"_s, u"--json"_s}), 0);
    QVERIFY(hctctl.output().contains(objectOf(u"tcp://192.168.1.20:4001"_s, u"network"_s)));
    QCOMPARE(hctctl.run({u"ports"_s}), 0);
    QVERIFY(hctctl.output().contains(u"\nCOM15   tcp://192.168.1.20:4001  en red\n"_s));
}

void TestPortsCommand::wrongAddressIsListedAsMissing()
{
    qputenv("HCT_COM15", "http://192.168.1.20");
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"ports"_s, u"--json"_s}), 0);
    QVERIFY(hctctl.output().contains(objectOf(u"http://192.168.1.20"_s, u"missing"_s)));
}

void TestPortsCommand::numberIsMadeAPortOfTheNetwork()
{
    const SettingsOfItsOwn settings;
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"ports"_s, u"set"_s, u"com15"_s, u"rfc2217://reloj:4001"_s}), 0);
    QCOMPARE(hctctl.output(), u"COM15 es ahora rfc2217://reloj:4001.\n"_s);
    QCOMPARE(hctctl.run({u"ports"_s, u"--json"_s}), 0);
    QVERIFY(hctctl.output().contains(objectOf(u"rfc2217://reloj:4001"_s, u"network"_s)));
}

void TestPortsCommand::numberIsMadeADevice()
{
    const SettingsOfItsOwn settings;
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"ports"_s, u"set"_s, u"COM15"_s, u"/dev/none"_s, u"--json"_s}), 0);
    QCOMPARE(hctctl.output(), u"{\"device\":\"/dev/none\",\"port\":\"COM15\"}\n"_s);
}

void TestPortsCommand::nameIsTakenAway()
{
    const SettingsOfItsOwn settings;
    qputenv("HCT_COM15", "/dev/none");
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"ports"_s, u"set"_s, u"COM15"_s, u"tcp://reloj:4001"_s}), 0);
    hctctl.output();
    QCOMPARE(hctctl.run({u"ports"_s, u"unset"_s, u"COM15"_s}), 0);
    QCOMPARE(hctctl.output(), u"COM15 es ahora /dev/none.\n"_s);
    qunsetenv("HCT_COM15");
    QCOMPARE(hctctl.run({u"ports"_s, u"unset"_s, u"COM15"_s}), 0);
    QCOMPARE(hctctl.output(), u"COM15 no tiene ahora ningún dispositivo.\n"_s);
}

void TestPortsCommand::nameThatCannotBeSavedIsTold()
{
    const QByteArray folder = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", "/dev/null");
    HctctlProcess hctctl;
    const int status = hctctl.run({u"ports"_s, u"set"_s, u"COM15"_s, u"tcp://reloj:4001"_s});
    qputenv("XDG_CONFIG_HOME", folder);
    QCOMPARE(status, 2);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(), u"No se ha podido guardar la configuración.\n"_s);
}

void TestPortsCommand::nameWithLettersThatTheSettingsLackIsRefused()
{
    const SettingsOfItsOwn settings;
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"ports"_s, u"set"_s, u"COM15"_s, u"tcp://\u6642\u8a08:4001"_s}), 2);
    QCOMPARE(hctctl.errors(), u"No se ha podido guardar la configuración.\n"_s);
    QCOMPARE(hctctl.run({u"ports"_s}), 0);
    QVERIFY(!hctctl.output().contains(u"COM15"_s));
}

void TestPortsCommand::givenPortComesBeforeTheName()
{
    const SettingsOfItsOwn settings;
    const SimulatorProcess clock;
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"ports"_s, u"set"_s, u"COM1"_s, u"tcp://127.0.0.1:9"_s}), 0);
    QCOMPARE(hctctl.run({u"status"_s, u"--port"_s, clock.device(), u"--quiet"_s}), 0);
}

QTEST_GUILESS_MAIN(TestPortsCommand)
#include "TestPortsCommand.moc"
