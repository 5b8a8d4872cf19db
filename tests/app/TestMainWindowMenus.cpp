#include "ConnectionWorkflow.h"
#include "LinkFixture.h"
#include "ProgramFixture.h"
#include "frmPrincipal.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTest>

using namespace Qt::StringLiterals;

/// What the main window shows: captions, entries, panels, in each state of the connection.
class TestMainWindowMenus : public QObject {
    Q_OBJECT
private slots:
    void init() { m_fixture = std::make_unique<ProgramFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void captionIsThatOfTheSystem();
    void startShowsNothingButTheMainWindow();
    void logBeginsWithTheInterruptedConnection();
    void menusStandInTheirOrder();
    void entriesHaveTheirCaptions_data();
    void entriesHaveTheirCaptions();
    void entriesDependOnTheConnection_data();
    void entriesDependOnTheConnection();
    void placeholdersAreNeverShown_data();
    void placeholdersAreNeverShown();
    void modemEntryTogglesItsCheckMark();
    void menusOpenByTheirAccessKeys();
    void entriesAreChosenByTheirAccessKeys();

    void panelsSayThatNothingIsConnected();
    void panelsSayWhatIsConnected();
    void modelPanelNamesTheModel_data();
    void modelPanelNamesTheModel();
    void portPanelShowsDeviceAsToolTip();
    void portPanelsToolTipShowsItsTextAsItStands();
    void portPanelShowsWhyThePortCouldNotBeOpened();
    void panelsAreKnownToAScreenReader();

private:
    std::unique_ptr<ProgramFixture> m_fixture;
};

void TestMainWindowMenus::captionIsThatOfTheSystem()
{
    QCOMPARE(m_fixture->program.mainWindow().windowTitle(), u"RELOJ PROGRAMADOR DE SEÑALES HCT"_s);
}

void TestMainWindowMenus::startShowsNothingButTheMainWindow()
{
    QVERIFY(m_fixture->program.mainWindow().isVisible());
    QCOMPARE(m_fixture->shownForms(), QStringList());
    QCOMPARE(ProgramFixture::modalWindow(), QString());
    QCOMPARE(m_fixture->serie.timesOpened, 0);
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
}

void TestMainWindowMenus::logBeginsWithTheInterruptedConnection()
{
    QCOMPARE(m_fixture->logLines(), QStringList{u"Conexión interrumpida"_s});
}

void TestMainWindowMenus::menusStandInTheirOrder()
{
    QStringList names;
    for (const QAction* top : m_fixture->program.mainWindow().menuBar()->actions()) {
        names.append(top->menu()->objectName() + u" "_s + top->text());
        for (const QAction* entry : top->menu()->actions())
            names.append(entry->objectName());
    }
    QCOMPARE(names, (QStringList{u"mnuComunicacions &Comunicaciones"_s,
                                 u"mnuConectar"_s,
                                 u"mnuDesconectar"_s,
                                 u"mnuSeparador3"_s,
                                 u"mnuUsarModem"_s,
                                 u"mnuSeparador2"_s,
                                 u"mnuRexistro"_s,
                                 u"mnuConfiguracion"_s,
                                 u"mnuSeparador4"_s,
                                 u"mnuSair"_s,
                                 u"mnuEquipo &Equipo"_s,
                                 u"mnuInformacion"_s,
                                 u"mnuSincronizacionReloxo"_s,
                                 u"mnuTelemando"_s,
                                 u"mnuIncidencias"_s,
                                 u"mnuSeparadorAux"_s,
                                 u"mnuAux1"_s,
                                 u"mnuAux2"_s,
                                 u"mnuAux3"_s,
                                 u"mnuSeparadorProgramacion"_s,
                                 u"mnuProgramacion"_s,
                                 u"mnuSeparadorFirmware"_s,
                                 u"mnuFirmware"_s,
                                 u"mnuAxuda &Ayuda"_s,
                                 u"mnuTemasAxuda"_s,
                                 u"mnuSeparador5"_s,
                                 u"mnuAcerca"_s}));
}

void TestMainWindowMenus::entriesHaveTheirCaptions_data()
{
    QTest::addColumn<QString>("caption");
    QTest::newRow("mnuConectar") << u"&Conectar"_s;
    QTest::newRow("mnuDesconectar") << u"&Desconectar"_s;
    QTest::newRow("mnuUsarModem") << u"&Utilizar módem"_s;
    QTest::newRow("mnuRexistro") << u"&Registro de Estado"_s;
    QTest::newRow("mnuConfiguracion") << u"Con&figuración..."_s;
    QTest::newRow("mnuSair") << u"&Salir"_s;
    QTest::newRow("mnuInformacion") << u"&Información general"_s;
    QTest::newRow("mnuSincronizacionReloxo") << u"&Sincronización reloj"_s;
    QTest::newRow("mnuTelemando") << u"&Telemando"_s;
    QTest::newRow("mnuIncidencias") << u"I&ncidencias"_s;
    QTest::newRow("mnuAux1") << u"&Aux1"_s;
    QTest::newRow("mnuAux2") << u"&Aux2"_s;
    QTest::newRow("mnuAux3") << u"&Aux3"_s;
    QTest::newRow("mnuProgramacion") << u"&Programación"_s;
    QTest::newRow("mnuFirmware") << u"&Actualizar firmware"_s;
    QTest::newRow("mnuTemasAxuda") << u"&Manual de la aplicación"_s;
    QTest::newRow("mnuAcerca") << u"Acerca de Control Equipo HCT"_s;
}

void TestMainWindowMenus::entriesHaveTheirCaptions()
{
    QFETCH(QString, caption);
    QCOMPARE(m_fixture->action(QTest::currentDataTag())->text(), caption);
}

void TestMainWindowMenus::entriesDependOnTheConnection_data()
{
    QTest::addColumn<QString>("without");
    QTest::addColumn<QString>("established");
    QTest::newRow("mnuConectar") << u"enabled"_s << u"disabled"_s;
    QTest::newRow("mnuDesconectar") << u"disabled"_s << u"enabled"_s;
    QTest::newRow("mnuUsarModem") << u"enabled"_s << u"disabled"_s;
    QTest::newRow("mnuRexistro") << u"enabled"_s << u"enabled"_s;
    QTest::newRow("mnuConfiguracion") << u"enabled"_s << u"disabled"_s;
    QTest::newRow("mnuSair") << u"enabled"_s << u"enabled"_s;
    QTest::newRow("mnuInformacion") << u"disabled"_s << u"enabled"_s;
    QTest::newRow("mnuSincronizacionReloxo") << u"disabled"_s << u"enabled"_s;
    QTest::newRow("mnuTelemando") << u"hidden"_s << u"enabled"_s;
    QTest::newRow("mnuSeparadorProgramacion") << u"hidden"_s << u"enabled"_s;
    QTest::newRow("mnuProgramacion") << u"hidden"_s << u"enabled"_s;
    QTest::newRow("mnuSeparadorFirmware") << u"hidden"_s << u"enabled"_s;
    QTest::newRow("mnuFirmware") << u"hidden"_s << u"enabled"_s;
    QTest::newRow("mnuTemasAxuda") << u"disabled"_s << u"disabled"_s;
    QTest::newRow("mnuAcerca") << u"enabled"_s << u"enabled"_s;
}

void TestMainWindowMenus::entriesDependOnTheConnection()
{
    QFETCH(QString, without);
    QFETCH(QString, established);
    const QAction* entry = m_fixture->action(QTest::currentDataTag());
    const auto state = [entry] {
        return !entry->isVisible()  ? u"hidden"_s
               : entry->isEnabled() ? u"enabled"_s
                                    : u"disabled"_s;
    };
    QCOMPARE(state(), without);
    m_fixture->choose("mnuConectar");
    m_fixture->tick(10);
    m_fixture->answer(QByteArray::fromHex("0200"));
    QCOMPARE(state(), without);
    m_fixture->tick(10);
    m_fixture->answer(LinkFixture::fullBlock());
    QCOMPARE(state(), established);
    m_fixture->choose("mnuDesconectar");
    QCOMPARE(state(), without);
}

void TestMainWindowMenus::placeholdersAreNeverShown_data()
{
    QTest::addColumn<int>("unused");
    for (const char* name : {"mnuIncidencias", "mnuSeparadorAux", "mnuAux1", "mnuAux2", "mnuAux3"})
        QTest::newRow(name) << 0;
}

void TestMainWindowMenus::placeholdersAreNeverShown()
{
    const QAction* entry = m_fixture->action(QTest::currentDataTag());
    QVERIFY(!entry->isVisible());
    m_fixture->establish(LinkFixture::fullBlock());
    QVERIFY(!entry->isVisible());
    m_fixture->choose("mnuDesconectar");
    QVERIFY(!entry->isVisible());
}

void TestMainWindowMenus::modemEntryTogglesItsCheckMark()
{
    const QAction* entry = m_fixture->action("mnuUsarModem");
    QVERIFY(!entry->isChecked());
    m_fixture->choose("mnuUsarModem");
    QVERIFY(entry->isChecked());
    QCOMPARE(m_fixture->modem.timesOpened, 0);
    m_fixture->choose("mnuUsarModem");
    QVERIFY(!entry->isChecked());
    m_fixture->choose("mnuConectar");
    QCOMPARE(m_fixture->serie.timesOpened, 1);
    QCOMPARE(m_fixture->modem.timesOpened, 0);
}

void TestMainWindowMenus::menusOpenByTheirAccessKeys()
{
    frmPrincipal& window = m_fixture->program.mainWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    for (const auto& [key, name] :
         {std::pair{Qt::Key_C, u"mnuComunicacions"_s}, std::pair{Qt::Key_E, u"mnuEquipo"_s},
          std::pair{Qt::Key_A, u"mnuAxuda"_s}}) {
        QTest::keyClick(&window, key, Qt::AltModifier);
        auto* menu = window.findChild<QMenu*>(name);
        QTRY_VERIFY(menu->isVisible());
        QTest::keyClick(menu, Qt::Key_Escape);
        QTest::keyClick(window.menuBar(), Qt::Key_Escape);
        QTRY_VERIFY(!menu->isVisible());
    }
}

void TestMainWindowMenus::entriesAreChosenByTheirAccessKeys()
{
    frmPrincipal& window = m_fixture->program.mainWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_C, Qt::AltModifier);
    auto* menu = window.findChild<QMenu*>(u"mnuComunicacions"_s);
    QTRY_VERIFY(menu->isVisible());
    QTest::keyClick(menu, Qt::Key_R);
    QTRY_COMPARE(m_fixture->shownForms(), QStringList{u"frmRexistroEstado"_s});
}

void TestMainWindowMenus::panelsSayThatNothingIsConnected()
{
    QCOMPARE(m_fixture->panel(1), u"Desconectado"_s);
    QCOMPARE(m_fixture->panel(2), QString());
    QCOMPARE(m_fixture->panel(3), QString());
    m_fixture->establish(LinkFixture::fullBlock());
    m_fixture->choose("mnuDesconectar");
    QCOMPARE(m_fixture->panel(1), u"Desconectado"_s);
    QCOMPARE(m_fixture->panel(2), QString());
    QCOMPARE(m_fixture->panel(3), QString());
}

void TestMainWindowMenus::panelsSayWhatIsConnected()
{
    m_fixture->choose("mnuConectar");
    QCOMPARE(m_fixture->panel(1), u"Desconectado"_s);
    QCOMPARE(m_fixture->panel(3), u"COM1,9600,N,8,1"_s);
    m_fixture->establish(LinkFixture::fullBlock());
    QCOMPARE(m_fixture->panel(1), u"Conectado"_s);
    QCOMPARE(m_fixture->panel(2), u"Equipo: HCT7200"_s);
}

void TestMainWindowMenus::modelPanelNamesTheModel_data()
{
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<QString>("text");
    QTest::newRow("30") << LinkFixture::fullBlock(30) << u"Equipo: HCT7200"_s;
    QTest::newRow("31") << LinkFixture::fullBlock(31) << u"Equipo: HCT7300"_s;
    QTest::newRow("0") << LinkFixture::fullBlock(0) << u"Equipo: HCT7300"_s;
    QTest::newRow("another family, in 5 bytes")
        << QByteArray::fromHex("0000000500") << u"Equipo: Desconocido"_s;
}

void TestMainWindowMenus::modelPanelNamesTheModel()
{
    QFETCH(QByteArray, block);
    QFETCH(QString, text);
    m_fixture->establish(block);
    QCOMPARE(m_fixture->panel(2), text);
}

void TestMainWindowMenus::portPanelShowsDeviceAsToolTip()
{
    m_fixture->serie.device = u"/dev/ttyUSB0"_s;
    m_fixture->choose("mnuConectar");
    QCOMPARE(m_fixture->panelLabel(3)->toolTip(), u"/dev/ttyUSB0"_s);
    m_fixture->tick(10);
    m_fixture->answer(QByteArray::fromHex("0200"));
    m_fixture->tick(10);
    m_fixture->answer(LinkFixture::fullBlock());
    m_fixture->choose("mnuDesconectar");
    QCOMPARE(m_fixture->panelLabel(3)->toolTip(), QString());
}

void TestMainWindowMenus::portPanelsToolTipShowsItsTextAsItStands()
{
    m_fixture->serie.device = u"R&D \"A\""_s;
    m_fixture->choose("mnuConectar");
    QCOMPARE(m_fixture->panelLabel(3)->toolTip(), u"R&D \"A\""_s);
}

void TestMainWindowMenus::portPanelShowsWhyThePortCouldNotBeOpened()
{
    m_fixture->serie.refusal = u"Permiso denegado"_s;
    m_fixture->choose("mnuConectar");
    QCOMPARE(m_fixture->panel(3), u"COM1,9600,N,8,1"_s);
    QCOMPARE(m_fixture->panelLabel(3)->toolTip(), u"Permiso denegado"_s);
    QCOMPARE(m_fixture->panelLabel(3)->accessibleDescription(), u"Permiso denegado"_s);
}

void TestMainWindowMenus::panelsAreKnownToAScreenReader()
{
    for (int number : {1, 2, 3}) {
        const QLabel* panel = m_fixture->panelLabel(number);
        QVERIFY(!panel->accessibleDescription().isEmpty());
        QVERIFY(panel->isVisible());
    }
}

QTEST_MAIN(TestMainWindowMenus)
#include "TestMainWindowMenus.moc"
