#include "ConnectedProgram.h"
#include "ConnectionWorkflow.h"
#include "MessageLink.h"
#include "SerialPort.h"
#include "frmPrincipal.h"

#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString failure = u"Fallo en identificación del equipo"_s;
const QString interrupted = u"Conexión interrumpida"_s;
} // namespace

/// The program and a simulated clock over a pseudo-terminal, used as an operator does.
class TestConnection : public QObject {
    Q_OBJECT
private slots:
    void connectsAndShowsWhatTheClockTells_data();
    void connectsAndShowsWhatTheClockTells();
    void fourFailedIdentificationsEndTheConnection();
    void wrongIdentificationNumberIsRefused();
    void lostLineEndsTheConnection();
    void lineThatComesBackConnectsAgain();
    void desconectarWithARequestOutstandingAndConectarAgain();
    void clockOfAnotherFamilyConnects();
    void passingFaultsDisturbNothing_data();
    void passingFaultsDisturbNothing();
    void silentClockIsIdentifiedAgain();
    void babblingLineNeitherConnectsNorHangs();
    void portThatIsNotThereFailsFourTimes();
    void closingWhileIdentifyingEndsAtOnce();
    void windowsThatPollTogetherAllGetTheirTurn();

private:
    static void connectTo(ConnectedProgram& run) { QVERIFY(run.connectToClock()); }
};

void TestConnection::connectsAndShowsWhatTheClockTells_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("window");
    QTest::newRow("HCT-7200") << u"7200"_s << QByteArray("frmInfoHCT7200");
    QTest::newRow("HCT-7300") << u"7300"_s << QByteArray("frmInfoHCT7300");
}

void TestConnection::connectsAndShowsWhatTheClockTells()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, window);
    ConnectedProgram run({u"--model"_s, model, u"--start"_s, u"2026-11-20T08:59:00"_s});
    connectTo(run);
    QCOMPARE(run.panel(1), u"Conectado"_s);
    QCOMPARE(run.panel(2), u"Equipo: HCT"_s + model);
    QCOMPARE(run.panel(3), u"COM1,9600,N,8,1"_s);
    QCOMPARE(run.logLines(),
             (QStringList{interrupted, u"Estableciendo conexión..."_s, u"Identificación aceptada"_s,
                          u"Conexión establecida"_s}));

    run.choose("mnuInformacion");
    QVERIFY(run.shownForm(window));
    QTRY_VERIFY_WITH_TIMEOUT(run.text(window, "lblHora").startsWith(u"8:59:"_s), patience);
    const QString before = run.text(window, "lblHora");
    QTRY_VERIFY_WITH_TIMEOUT(run.text(window, "lblHora") != before, patience);
    run.clock.command(u"outputs 5"_s);
    QTRY_COMPARE_WITH_TIMEOUT(run.program.session().globais().GeneralData.at(2), char(5), patience);

    run.dialogs.confirmations = {true};
    run.choose("mnuDesconectar");
    QVERIFY(!run.shownForm(window));
    QCOMPARE(run.panel(1), u"Desconectado"_s);
    QCOMPARE(run.panel(2), QString());
    QCOMPARE(run.panel(3), QString());
    QCOMPARE(run.logLines().constLast(), interrupted);
}

void TestConnection::fourFailedIdentificationsEndTheConnection()
{
    ConnectedProgram run({u"--fault"_s, u"refuse 1 always on identification"_s});
    run.choose("mnuConectar");
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(failure), 4, patience);
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(interrupted), 2, patience);
    QCOMPARE(run.panel(1), u"Desconectado"_s);
    QCOMPARE(run.panel(3), QString());
}

void TestConnection::wrongIdentificationNumberIsRefused()
{
    ConnectedProgram run({u"--identification"_s, u"9"_s});
    run.choose("mnuConectar");
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(interrupted), 2, patience);
    QVERIFY(!run.isEstablished());
}

void TestConnection::lostLineEndsTheConnection()
{
    ConnectedProgram run;
    connectTo(run);
    run.choose("mnuInformacion");
    run.clock.command(u"vanish"_s);
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(interrupted), 2, patience);
    QCOMPARE(run.timesLogged(failure), 4);
    QVERIFY(!run.shownForm("frmInfoHCT7200"));
    QCOMPARE(run.panel(1), u"Desconectado"_s);
}

void TestConnection::lineThatComesBackConnectsAgain()
{
    ConnectedProgram run;
    connectTo(run);
    run.clock.command(u"vanish"_s);
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(interrupted), 2, patience);
    run.clock.command(u"return"_s);
    qputenv("HCT_COM1", run.clock.state(u"device"_s).isEmpty()
                            ? run.clock.device().toLocal8Bit()
                            : run.clock.state(u"device"_s).toLocal8Bit());
    connectTo(run);
    QCOMPARE(run.timesLogged(u"Conexión establecida"_s), 2);
}

void TestConnection::desconectarWithARequestOutstandingAndConectarAgain()
{
    ConnectedProgram run;
    connectTo(run);
    // A late answer could arrive during the next identification, and count as its failure.
    run.clock.command(u"fault silent on general"_s);
    QTRY_VERIFY_WITH_TIMEOUT(run.program.session().link().Ocupado(), patience);
    run.choose("mnuDesconectar");
    QVERIFY(!run.program.session().link().Ocupado());
    QCOMPARE(run.panel(1), u"Desconectado"_s);
    connectTo(run);
    QCOMPARE(run.timesLogged(failure), 0);
    QCOMPARE(run.timesLogged(u"Conexión establecida"_s), 2);
}

void TestConnection::clockOfAnotherFamilyConnects()
{
    ConnectedProgram run({u"--type"_s, u"5"_s});
    connectTo(run);
    QCOMPARE(run.panel(2), u"Equipo: Desconocido"_s);
    QCOMPARE(run.program.session().globais().GeneralData.size(), 5);
    for (const char* entry :
         {"mnuInformacion", "mnuTelemando", "mnuSincronizacionReloxo", "mnuFirmware"})
        run.choose(entry);
    QVERIFY(run.shownForm("frmInfoHCT7200"));
    QVERIFY(run.shownForm("frmTelemandoHCT7200"));
    const QByteArray seen = run.program.session().globais().GeneralData;
    QTRY_VERIFY_WITH_TIMEOUT(
        run.program.session().globais().GeneralData.constData() != seen.constData(), patience);
    QVERIFY(run.isEstablished());
}

void TestConnection::passingFaultsDisturbNothing_data()
{
    QTest::addColumn<QString>("fault");
    for (const char* fault : {"noise 686868fe48", "split 1", "station", "checksum", "short 4",
                              "refuse 1", "end", "echo", "code 9", "truncate 20"})
        QTest::newRow(fault) << QString::fromLatin1(fault);
}

void TestConnection::passingFaultsDisturbNothing()
{
    QFETCH(QString, fault);
    ConnectedProgram run;
    connectTo(run);
    run.clock.command(u"fault %1 on general"_s.arg(fault));
    QTRY_VERIFY_WITH_TIMEOUT(run.clock.command(u"faults"_s).isEmpty(), patience);
    // The clock's time has changed, so the program has asked again.
    run.clock.command(u"inputs 8"_s);
    QTRY_COMPARE_WITH_TIMEOUT(run.program.session().globais().GeneralData.at(218), char(8),
                              patience);
    QVERIFY(run.isEstablished());
    QCOMPARE(run.timesLogged(u"Identificación aceptada"_s), 1);
}

void TestConnection::silentClockIsIdentifiedAgain()
{
    ConnectedProgram run;
    connectTo(run);
    run.choose("mnuInformacion");
    run.clock.command(u"fault echo times 4 on general"_s);
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(u"Identificación aceptada"_s), 2, patience);
    QVERIFY(run.isEstablished());
    QVERIFY(run.shownForm("frmInfoHCT7200"));
    QCOMPARE(run.timesLogged(u"Conexión establecida"_s), 1);
}

void TestConnection::babblingLineNeitherConnectsNorHangs()
{
    // Now and then an answer would arrive in a gap of the noise.
    ConnectedProgram run({u"--babble"_s, u"--fault"_s, u"silent always on identification"_s});
    run.choose("mnuConectar");
    QTRY_VERIFY_WITH_TIMEOUT(run.timesLogged(failure) >= 1, patience);
    run.clock.command(u"babble off"_s);
    run.clock.command(u"faults clear"_s);
    QTRY_VERIFY_WITH_TIMEOUT(run.isEstablished() || run.timesLogged(interrupted) == 2, patience);
}

void TestConnection::portThatIsNotThereFailsFourTimes()
{
    ConnectedProgram run;
    const QString device = run.chooseAbsentPort();
    run.choose("mnuConectar");
    QCOMPARE(run.panel(3), u"COM16,9600,N,8,1"_s);
    const auto* panel = run.program.mainWindow().findChild<QLabel*>(u"stbBarra(3)"_s);
    QCOMPARE(panel->toolTip(),
             u"No existe %1: compruebe que el adaptador está conectado."_s.arg(device));
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(failure), 4, patience);
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(interrupted), 2, patience);
}

void TestConnection::closingWhileIdentifyingEndsAtOnce()
{
    ConnectedProgram run({u"--fault"_s, u"silent always on identification"_s});
    run.choose("mnuConectar");
    QTRY_VERIFY_WITH_TIMEOUT(run.program.session().link().Ocupado(), patience);
    run.choose("mnuSair");
    QVERIFY(!run.program.mainWindow().isVisible());
    QVERIFY(!run.program.session().link().Ocupado());
    QVERIFY(!run.program.session().link().directPort().isOpen());
}

void TestConnection::windowsThatPollTogetherAllGetTheirTurn()
{
    ConnectedProgram run({u"--start"_s, u"2026-11-20T08:59:00"_s});
    connectTo(run);
    run.choose("mnuTelemando");
    run.choose("mnuInformacion");
    run.clock.command(u"inputs 0"_s);
    QTRY_COMPARE_WITH_TIMEOUT(run.program.session().globais().GeneralData.at(218), char(0),
                              patience);
    const QString before = run.text("frmInfoHCT7200", "lblHora");
    QTRY_VERIFY_WITH_TIMEOUT(run.text("frmInfoHCT7200", "lblHora") != before, patience);
    QVERIFY(run.shownForm("frmTelemandoHCT7200"));
    QVERIFY(run.isEstablished());
}

QTEST_MAIN(TestConnection)
#include "TestConnection.moc"
