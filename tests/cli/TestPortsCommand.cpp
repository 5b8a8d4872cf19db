#include "HctctlProcess.h"
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

QTEST_GUILESS_MAIN(TestPortsCommand)
#include "TestPortsCommand.moc"
