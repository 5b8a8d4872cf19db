#include "HctctlProcess.h"
#include "SimulatorProcess.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// `hctctl outputs`, over the line. Output 1 is "Avisos 1", which is bit 2 of the clock.
class TestOutputsCommand : public QObject {
    Q_OBJECT
private slots:
    void modeAndStatesAreShown();
    void showingChangesNothing();
    void switchingEntersManualModeAndSaysSo_data();
    void switchingEntersManualModeAndSaysSo();
    void outputsThatAreNotNamedStayAsTheyAre();
    void manualModeIsToldEvenWhenQuiet();
    void outputsAreGivenBack();
    void refusalIsTold();
    void silenceIsTold();
    void clockThatIsStillInManualModeIsTold();
    void silenceBeforeTheSwitchingIsTold();
    void clockThatDoesNotSwitchIsTold();
    void adviceWorksWhenItIsCopied();
};

namespace {

QString manualWarning(const SimulatorProcess& clock)
{
    return u"El reloj queda en modo manual y no sigue su programa; para volver al "
           "automático: hctctl outputs auto --port %1\n"_s.arg(clock.device());
}

} // namespace

void TestOutputsCommand::modeAndStatesAreShown()
{
    const SimulatorProcess clock;
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"outputs"_s, u"--port"_s, clock.device()}), 0);
    QCOMPARE(hctctl.output(), u"Modo:     automático\n"
                              "Avisos 1: apagado\n"
                              "Avisos 2: apagado\n"
                              "Avisos 3: apagado\n"_s);
    QCOMPARE(hctctl.errors(), QString());
}

void TestOutputsCommand::showingChangesNothing()
{
    SimulatorProcess clock;
    clock.command(u"outputs 1"_s);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"outputs"_s, u"--json"_s, u"--port"_s, clock.device()}), 0);
    QCOMPARE(hctctl.output(), uR"({"mode":"manual","outputs":[false,false,true]})"_s + u'\n');
    QCOMPARE(hctctl.errors(), manualWarning(clock));
    QCOMPARE(clock.state(u"mode"_s), u"manual"_s);
}

void TestOutputsCommand::switchingEntersManualModeAndSaysSo_data()
{
    QTest::addColumn<QString>("model");
    QTest::newRow("HCT-7200") << u"7200"_s;
    QTest::newRow("HCT-7300") << u"7300"_s;
}

void TestOutputsCommand::switchingEntersManualModeAndSaysSo()
{
    QFETCH(QString, model);
    SimulatorProcess clock({u"--model"_s, model});
    HctctlProcess hctctl;
    QCOMPARE(
        hctctl.run({u"outputs"_s, u"1=on"_s, u"2=off"_s, u"--json"_s, u"--port"_s, clock.device()}),
        0);
    const QString output = hctctl.output();
    QCOMPARE(output, uR"({"mode":"manual","outputs":[true,false,false]})"_s + u'\n');
    QCOMPARE(readByAnotherProgram(output) + u'\n', output);
    QCOMPARE(hctctl.errors(), manualWarning(clock));
    QCOMPARE(clock.state(u"mode"_s), u"manual"_s);
    QCOMPARE(clock.state(u"outputs"_s), u"0x04"_s);
}

void TestOutputsCommand::outputsThatAreNotNamedStayAsTheyAre()
{
    SimulatorProcess clock;
    clock.command(u"outputs 0x04"_s);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"outputs"_s, u"3=on"_s, u"--port"_s, clock.device()}), 0);
    QCOMPARE(hctctl.output(), u"Modo:     manual\n"
                              "Avisos 1: encendido\n"
                              "Avisos 2: apagado\n"
                              "Avisos 3: encendido\n"_s);
    QCOMPARE(clock.state(u"outputs"_s), u"0x05"_s);
}

void TestOutputsCommand::manualModeIsToldEvenWhenQuiet()
{
    const SimulatorProcess clock;
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"outputs"_s, u"2=on"_s, u"--quiet"_s, u"--port"_s, clock.device()}), 0);
    QCOMPARE(hctctl.errors(), manualWarning(clock));
}

void TestOutputsCommand::outputsAreGivenBack()
{
    SimulatorProcess clock;
    clock.command(u"outputs 7"_s);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"outputs"_s, u"auto"_s, u"--json"_s, u"--port"_s, clock.device()}), 0);
    QCOMPARE(hctctl.output(), uR"({"mode":"automatic","outputs":[false,false,false]})"_s + u'\n');
    QCOMPARE(hctctl.errors(), QString());
    QCOMPARE(clock.state(u"mode"_s), u"automatic"_s);
}

void TestOutputsCommand::refusalIsTold()
{
    const SimulatorProcess clock({u"--fault"_s, u"refuse always on outputs"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"outputs"_s, u"1=on"_s, u"--port"_s, clock.device()}), 1);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(
        hctctl.errors(),
        u"El reloj no acepta la orden para sus salidas: si al repetirla sigue igual, avise al "
        "servicio técnico. El reloj puede haber quedado en modo manual; para volver al automático: hctctl outputs auto --port %1\n"_s
            .arg(clock.device()));
}

void TestOutputsCommand::silenceIsTold()
{
    const SimulatorProcess clock({u"--fault"_s, u"silent always on mode"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run(
                 {u"outputs"_s, u"auto"_s, u"--line"_s, u"115200"_s, u"--port"_s, clock.device()}),
             4);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(),
             u"El reloj ha dejado de contestar: compruebe el cable. El reloj puede "
             "seguir en modo manual; para volver al automático: hctctl outputs auto --port %1 "
             "--line 115200\n"_s.arg(clock.device()));
}

void TestOutputsCommand::clockThatIsStillInManualModeIsTold()
{
    SimulatorProcess clock({u"--fault"_s, u"silent always on mode"_s});
    clock.command(u"outputs 0x04"_s);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run(
                 {u"outputs"_s, u"2=on"_s, u"--line"_s, u"115200"_s, u"--port"_s, clock.device()}),
             4);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(
        hctctl.errors(),
        u"El reloj ha dejado de contestar: compruebe el cable. No se ha conmutado ninguna "
        "salida. "_s +
            u"El reloj queda en modo manual y no sigue su programa; para volver al automático: "
            "hctctl outputs auto --port %1 --line 115200\n"_s.arg(clock.device()));
}

void TestOutputsCommand::adviceWorksWhenItIsCopied()
{
#ifdef Q_OS_WIN
    QSKIP("Windows has no links to ports.");
#else
    SimulatorProcess clock({u"--station"_s, u"7"_s, u"--identification"_s, u"9"_s});
    const QTemporaryDir folder;
    const QString port = folder.filePath(u"Ana's clock"_s);
    QVERIFY(QFile::link(clock.device(), port));
    HctctlProcess hctctl;
    QCOMPARE(
        hctctl.run({u"outputs"_s, u"1=on"_s, u"--wait"_s, u"20"_s, u"--port"_s, port, u"--line"_s,
                    u"9600,N,8,1"_s, u"--station"_s, u"7"_s, u"--identification"_s, u"9"_s}),
        0);
    const QString advice = hctctl.errors().section(u"automático: "_s, 1);
    QCOMPARE(advice, u"hctctl outputs auto --port '%1/Ana'\\''s clock' --line 9600,N,8,1 "
                     "--station 7 --identification 9\n"_s.arg(folder.path()));
    QCOMPARE(hctctl.runInShell(u"hctctl() { \"$0\" \"$@\"; }\n"_s + advice, {}), 0);
    QCOMPARE(clock.state(u"mode"_s), u"automatic"_s);
#endif
}

void TestOutputsCommand::silenceBeforeTheSwitchingIsTold()
{
    const SimulatorProcess clock({u"--fault"_s, u"silent always on mode"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run(
                 {u"outputs"_s, u"1=on"_s, u"--line"_s, u"115200"_s, u"--port"_s, clock.device()}),
             4);
    QCOMPARE(hctctl.errors(), u"El reloj ha dejado de contestar: compruebe el cable. No se ha "
                              "conmutado ninguna salida.\n"_s);
}

void TestOutputsCommand::clockThatDoesNotSwitchIsTold()
{
    // Its answers are those of a clock whose outputs stay off.
    const SimulatorProcess clock(
        {u"--fault"_s, u"noise 680404680108ca07da16 always after 1 on mode"_s});
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"outputs"_s, u"1=on"_s, u"--port"_s, clock.device()}), 1);
    QCOMPARE(hctctl.output(), u"Modo:     manual\nAvisos 1: apagado\nAvisos 2: apagado\n"
                              "Avisos 3: apagado\n"_s);
    QCOMPARE(hctctl.errors(),
             manualWarning(clock) +
                 u"El reloj no ha conmutado las salidas como se le ha pedido: si al "
                 "repetir la orden sigue igual, avise al servicio técnico.\n"_s);
}

QTEST_GUILESS_MAIN(TestOutputsCommand)
#include "TestOutputsCommand.moc"
