#include "ConnectedProgram.h"
#include "CoverLabel.h"
#include "MessageLink.h"
#include "RegistryEditor.h"
#include "SerialPort.h"
#include "TextUpDown.h"
#include "TextoRestrinxido.h"
#include "frmPortoSerie.h"
#include "frmPrincipal.h"
#include "frmProg.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString settingsKey = u"HKCU\\Software\\Quorvex\\Lurimat"_s;

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

} // namespace

/// The whole program with what only Windows has: registry, COM ports, paths and programs.
class TestWindowsProgram : public QObject {
    Q_OBJECT
private slots:
    void init() { RegistryEditor::removeKey(settingsKey); }
    void cleanupTestCase() { RegistryEditor::removeKey(settingsKey); }

    void settingsLandInTheRegistryAsTexts();
    void settingsThatTheOperatorPutThereAreUsed();
    void clockInTheNetworkIsReachedByItsChannel_data();
    void clockInTheNetworkIsReachedByItsChannel();
    void portInUseIsToldAndFailsFourTimes();
    void programmeIsKeptInAFileWithASpanishPath();
    void modemDialsAndHangsUpByDtr();
    void scriptsAreLookedForWhereTheProgramStarts();
    void systemInformationIsStarted();

private:
    static void click(QWidget* window, const char* name)
    {
        auto* button = window->findChild<QPushButton*>(QString::fromLatin1(name));
        QVERIFY(button);
        QTest::mouseClick(button, Qt::LeftButton);
    }
};

void TestWindowsProgram::settingsLandInTheRegistryAsTexts()
{
    ConnectedProgram run;
    QCOMPARE(run.program.session().settings().directSpeed, u"9600"_s);
    auto& form = run.program.communications();
    form.open();
    form.findChild<QLineEdit*>(u"txtInicializacion"_s)->setText(u"AT&F"_s);
    click(&form, "cmdCambiar");
    QVERIFY(!form.isVisible());

    const auto stored = [](const QString& group, const QString& name) {
        return RegistryEditor::query(settingsKey + u'\\' + group, name);
    };
    QCOMPARE(stored(u"Directo"_s, u"Puerto"_s), u"REG_SZ 0"_s);
    QCOMPARE(stored(u"Directo"_s, u"Velocidad"_s), u"REG_SZ 9600"_s);
    QCOMPARE(stored(u"Directo"_s, u"Bits"_s), u"REG_SZ 8"_s);
    QCOMPARE(stored(u"Directo"_s, u"Paridad"_s), u"REG_SZ Ninguna"_s);
    QCOMPARE(stored(u"Directo"_s, u"Paro"_s), u"REG_SZ 1"_s);
    QCOMPARE(stored(u"Directo"_s, u"DTR"_s), u"REG_SZ Off"_s);
    QCOMPARE(stored(u"Directo"_s, u"RTS"_s), u"REG_SZ Off"_s);
    QCOMPARE(stored(u"Remoto"_s, u"Puerto"_s), u"REG_SZ 0"_s);
    QCOMPARE(stored(u"Remoto"_s, u"Velocidad"_s), u"REG_SZ 9600"_s);
    QCOMPARE(stored(u"Comun"_s, u"Estacion"_s), u"REG_SZ 1"_s);
    QCOMPARE(stored(u"Comun"_s, u"Identificacion"_s), u"REG_SZ 1"_s);
    QCOMPARE(stored(u"Remoto"_s, u"Inicializacion"_s), u"REG_SZ AT&F"_s);
}

void TestWindowsProgram::settingsThatTheOperatorPutThereAreUsed()
{
    RegistryEditor::add(settingsKey + u"\\Comun"_s, u"Estacion"_s, u"REG_SZ"_s, u"7"_s);
    // A number whose bytes have no leading zero: 0x23.
    RegistryEditor::add(settingsKey + u"\\Comun"_s, u"Identificacion"_s, u"REG_DWORD"_s, u"35"_s);
    RegistryEditor::add(settingsKey + u"\\Directo"_s, u"Velocidad"_s, u"REG_SZ"_s, u"19200"_s);
    ConnectedProgram run({u"--station"_s, u"7"_s, u"--identification"_s, u"35"_s});
    QVERIFY(run.connectToClock());
    QCOMPARE(run.panel(3), u"COM1,19200,N,8,1"_s);
}

void TestWindowsProgram::clockInTheNetworkIsReachedByItsChannel_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("RFC 2217") << u"rfc2217://127.0.0.1:24217"_s;
    QTest::newRow("raw") << u"tcp://127.0.0.1:24218"_s;
}

void TestWindowsProgram::clockInTheNetworkIsReachedByItsChannel()
{
    QFETCH(QString, address);
    RegistryEditor::add(settingsKey + u"\\Puertos"_s, u"COM16"_s, u"REG_SZ"_s, address);
    RegistryEditor::add(settingsKey + u"\\Directo"_s, u"Puerto"_s, u"REG_SZ"_s, u"15"_s);
    ConnectedProgram run;
    QVERIFY(run.connectToClock());
    QCOMPARE(run.panel(3), u"COM16,9600,N,8,1"_s);
    QCOMPARE(run.program.session().link().directPort().deviceName(), address);
}

void TestWindowsProgram::portInUseIsToldAndFailsFourTimes()
{
    RegistryEditor::add(settingsKey + u"\\Directo"_s, u"Puerto"_s, u"REG_SZ"_s, u"6"_s);
    ConnectedProgram run;
    run.choose("mnuConectar");
    QCOMPARE(run.panel(3), u"COM7,9600,N,8,1"_s);
    const auto* panel = run.program.mainWindow().findChild<QLabel*>(u"stbBarra(3)"_s);
    QCOMPARE(panel->toolTip(), u"COM7 está en uso por otro programa."_s);
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(u"Fallo en identificación del equipo"_s), 4,
                              patience);
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(u"Conexión interrumpida"_s), 2, patience);
}

void TestWindowsProgram::programmeIsKeptInAFileWithASpanishPath()
{
    const QString folder = u"C:\\Año nuevo"_s;
    const QString path = folder + u"\\programación.hct"_s;
    QDir(folder).removeRecursively();
    QVERIFY(QDir().mkpath(folder));
    ConnectedProgram run({u"--programme"_s, u"school"_s});
    QVERIFY(run.connectToClock());
    run.choose("mnuProgramacion");
    QPointer<frmProg> form = run.program.mainWindow().findChild<frmProg*>();
    QVERIFY(form);
    QTRY_VERIFY_WITH_TIMEOUT(form->findChild<QWidget*>(u"fraEnvolvente"_s)->isVisible(), patience);
    auto* first = form->findChild<TextUpDown*>(u"txtHora(0)"_s);
    first->setFocus();
    QTest::keyClicks(first, u"7"_s);
    run.dialogs.paths = {path, path};
    click(form, "cmdGardar");
    QVERIFY(run.dialogs.boxes.isEmpty());
    QVERIFY2(contents(path).startsWith("--AVISOS 1--\r\n8\r\n0\r\n7\r\n0\r\n"),
             contents(path).left(60).constData());
    // Saved under its own name, and no other file is left.
    QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{u"programación.hct"_s});

    click(form, "cmdBorrar");
    QCOMPARE(first->value(0), 0);
    click(form, "cmdAbrir");
    QCOMPARE(first->value(0), 7);
    click(form, "cmdEnviar");
    QTRY_VERIFY_WITH_TIMEOUT(form.isNull(), patience);
    // 7:00 from Monday to Friday.
    QVERIFY(run.clock.state(u"block1.alarms"_s).contains(u"e7c0"_s));
    QVERIFY(QDir(folder).removeRecursively());
}

void TestWindowsProgram::modemDialsAndHangsUpByDtr()
{
    const QString log = qEnvironmentVariable("MODEM_LINES_LOG");
    RegistryEditor::add(settingsKey + u"\\Remoto"_s, u"Puerto"_s, u"REG_SZ"_s, u"1"_s);
    ConnectedProgram run({u"--modem"_s, u"--dial-delay"_s, u"100"_s});
    run.dialogs.texts = {u"600123456"_s};
    run.choose("mnuUsarModem");
    QVERIFY(run.connectToClock());
    QCOMPARE(run.panel(3), u"COM2,9600,N,8,1"_s);
    QVERIFY(run.clock.command(u"modem state"_s).contains(u"modem=call"_s));
    QVERIFY(run.clock.command(u"modem state"_s).contains(u"dialled=600123456"_s));

    QFile::remove(log);
    run.dialogs.confirmations = {true};
    run.choose("mnuDesconectar");
    QVERIFY(!run.isEstablished());
    QVERIFY(!run.program.session().link().directPort().isOpen());
    QTRY_VERIFY_WITH_TIMEOUT(!run.clock.command(u"modem state"_s).contains(u"modem=call"_s),
                             patience);
    if (log.isEmpty())
        QSKIP("The lines of this port are not watched.");
    const QList<QByteArray> changes = contents(log).split('\n');
    QVERIFY2(changes.size() >= 2, contents(log).constData());
    QVERIFY2(changes[0].endsWith(" DTR=0 RTS=0"), changes[0].constData());
    QVERIFY2(changes[1].endsWith(" DTR=1 RTS=0"), changes[1].constData());
}

void TestWindowsProgram::scriptsAreLookedForWhereTheProgramStarts()
{
    RegistryEditor::add(settingsKey + u"\\Remoto"_s, u"Puerto"_s, u"REG_SZ"_s, u"1"_s);
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(u"C:\\windows"_s));
    {
        ConnectedProgram run({u"--modem"_s});
        auto& form = run.program.communications();
        form.open();
        click(&form, "cmdExecutarScript");
        QCOMPARE(run.dialogs.fileRequests.size(), 1);
        QCOMPARE(run.dialogs.fileRequests[0].directory, u"C:\\windows\\Modems\\"_s);
        form.reject();
    }
    QVERIFY(QDir::setCurrent(before));
}

void TestWindowsProgram::systemInformationIsStarted()
{
    const QString key = u"HKLM\\SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"_s;
    const QString folder = u"C:\\Información"_s;
    QVERIFY(QDir().mkpath(folder));
    const QString standIn = folder + u"\\msinfo32.exe"_s;
    const QString trace = standIn + u".started"_s;
    QFile::remove(standIn);
    QFile::remove(trace);
    QVERIFY(QFile::copy(QStringLiteral(HCT_STAND_IN), standIn));
    RegistryEditor::add(key, u"PATH"_s, u"REG_SZ"_s, standIn);

    ConnectedProgram run;
    run.choose("mnuAcerca");
    QWidget* about = QApplication::activeModalWidget();
    QVERIFY(about);
    click(about, "cmdSysInfo");
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(trace), patience);
    click(about, "cmdOK");
    QVERIFY(run.dialogs.boxes.isEmpty());
    RegistryEditor::removeKey(key);
    QDir(folder).removeRecursively();
}

QTEST_MAIN(TestWindowsProgram)
#include "TestWindowsProgram.moc"
