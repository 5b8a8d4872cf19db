#include "ConnectionWorkflow.h"
#include "LinkFixture.h"
#include "MdiForm.h"
#include "MessageLink.h"
#include "ProgramFixture.h"
#include "frmPrincipal.h"
#include "frmRexistroEstado.h"

#include <QAction>
#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/// A window that refuses to close, as the firmware window does during a transfer.
class Refuser final : public MdiForm {
public:
    explicit Refuser(QMdiArea& area) : MdiForm(area) { showForm(); }

    bool refuses = true;
    QStringList* steps = nullptr;
    std::function<bool()> linkIsOpen;

protected:
    bool queryUnload(CloseReason reason) override
    {
        return !refuses || reason != CloseReason::Shutdown;
    }
    void unload() override
    {
        if (steps)
            steps->append(linkIsOpen() ? u"unloaded while the line was open"_s : u"unloaded"_s);
    }
};

} // namespace

/// Which windows the menus open, and how the program ends.
class TestMainWindow : public QObject {
    Q_OBJECT
private slots:
    void init() { m_fixture = std::make_unique<ProgramFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void modelByteDecidesTheWindows_data();
    void modelByteDecidesTheWindows();
    void programmingIsModal();
    void settingsAreModal();
    void synchronisationAndFirmwareServeBothModels();
    void windowOpenedTwiceIsOneWindow();
    void openedWindowHasTheFocus();
    void endOfTheConnectionClosesTheClockWindows();
    void endOfTheConnectionInsideATickClosesTheClockWindows();
    void endOfTheConnectionLeavesProgrammingAndFirmware();
    void closedWindowCanBeOpenedAgain();
    void shortBlockCrashesNoWindow();

    void diallingKeepsTheTimerServiceStill();
    void secondConectarWhileDiallingDoesNothing();
    void closingWhileDiallingAbandonsIt();

    void salirEndsTheProgram();
    void titleBarEndsTheProgram();
    void closingWithTheBitClearDoesNotAsk();
    void closingInRemoteControlAsks();
    void closingRefusedKeepsEverything();
    void windowThatRefusesKeepsTheProgram();
    void unloadOrderIsKept();
    void closingTwiceUnloadsOnce();
    void endUnderTheQuestionIsTheEnd();
    void endingWithoutAskingClosesRefusers();
    void endingClosesAModalWindow();
    void afterTheEndNothingTicks();

private:
    /// Conectar through the modem; `meanwhile` runs while its initialisation awaits an answer.
    void dial(const std::function<void()>& meanwhile)
    {
        m_fixture->choose("mnuUsarModem");
        QTimer::singleShot(0, &m_fixture->program.mainWindow(), meanwhile);
        m_fixture->choose("mnuConectar");
    }
    void establish(quint8 model = 30) { m_fixture->establish(LinkFixture::fullBlock(model)); }

    std::unique_ptr<ProgramFixture> m_fixture;
};

void TestMainWindow::modelByteDecidesTheWindows_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QString>("window");
    QTest::newRow("30, information") << 30 << QByteArray("mnuInformacion") << u"frmInfoHCT7200"_s;
    QTest::newRow("31, information") << 31 << QByteArray("mnuInformacion") << u"frmInfoHCT7300"_s;
    QTest::newRow("0, information") << 0 << QByteArray("mnuInformacion") << u"frmInfoHCT7300"_s;
    QTest::newRow("255, information") << 255 << QByteArray("mnuInformacion") << u"frmInfoHCT7300"_s;
    QTest::newRow("30, remote control")
        << 30 << QByteArray("mnuTelemando") << u"frmTelemandoHCT7200"_s;
    QTest::newRow("31, remote control")
        << 31 << QByteArray("mnuTelemando") << u"frmTelemandoHCT7300"_s;
}

void TestMainWindow::modelByteDecidesTheWindows()
{
    QFETCH(int, model);
    QFETCH(QByteArray, entry);
    QFETCH(QString, window);
    establish(static_cast<quint8>(model));
    m_fixture->choose(entry.constData());
    QCOMPARE(m_fixture->shownForms(), QStringList{window});
}

void TestMainWindow::programmingIsModal()
{
    establish(30);
    m_fixture->choose("mnuProgramacion");
    QCOMPARE(ProgramFixture::modalWindow(), u"frmProgHCT7200"_s);
    QCOMPARE(m_fixture->shownForms(), QStringList());
    m_fixture = std::make_unique<ProgramFixture>();
    establish(31);
    m_fixture->choose("mnuProgramacion");
    QCOMPARE(ProgramFixture::modalWindow(), u"frmProgHCT7300"_s);
}

void TestMainWindow::settingsAreModal()
{
    m_fixture->choose("mnuConfiguracion");
    QCOMPARE(ProgramFixture::modalWindow(), u"frmPortoSerie"_s);
}

void TestMainWindow::synchronisationAndFirmwareServeBothModels()
{
    for (quint8 model : {quint8(30), quint8(31)}) {
        m_fixture = std::make_unique<ProgramFixture>();
        establish(model);
        m_fixture->choose("mnuSincronizacionReloxo");
        m_fixture->choose("mnuFirmware");
        QCOMPARE(m_fixture->shownForms(),
                 (QStringList{u"frmSincronizacionReloxo"_s, u"frmProgramPROM"_s}));
    }
}

void TestMainWindow::windowOpenedTwiceIsOneWindow()
{
    establish();
    m_fixture->choose("mnuInformacion");
    m_fixture->frameOf("frmInfoHCT7200")->showMinimized();
    m_fixture->choose("mnuInformacion");
    QCOMPARE(m_fixture->shownForms(), QStringList{u"frmInfoHCT7200"_s});
    QVERIFY(!m_fixture->frameOf("frmInfoHCT7200")->isMinimized());
}

void TestMainWindow::openedWindowHasTheFocus()
{
    QVERIFY(QTest::qWaitForWindowActive(&m_fixture->program.mainWindow()));
    establish();
    m_fixture->choose("mnuRexistro");
    m_fixture->choose("mnuInformacion");
    QTRY_VERIFY(m_fixture->frameOf("frmInfoHCT7200")->isAncestorOf(QApplication::focusWidget()));
    m_fixture->choose("mnuRexistro");
    QTRY_VERIFY(m_fixture->frameOf("frmRexistroEstado")->isAncestorOf(QApplication::focusWidget()));
}

void TestMainWindow::endOfTheConnectionClosesTheClockWindows()
{
    establish();
    for (const char* entry : {"mnuInformacion", "mnuTelemando", "mnuSincronizacionReloxo"})
        m_fixture->choose(entry);
    QCOMPARE(m_fixture->shownForms().size(), 3);
    m_fixture->choose("mnuDesconectar");
    QCOMPARE(m_fixture->shownForms(), QStringList());
    QTRY_COMPARE(m_fixture->program.mainWindow().findChildren<MdiForm*>().size(), 1);
}

void TestMainWindow::endOfTheConnectionInsideATickClosesTheClockWindows()
{
    establish();
    for (const char* entry : {"mnuInformacion", "mnuTelemando", "mnuSincronizacionReloxo"})
        m_fixture->choose(entry);
    m_fixture->serie.vanish();
    m_fixture->tick(1000);
    QCOMPARE(m_fixture->shownForms(), QStringList());
    QCOMPARE(m_fixture->logLines().last(), u"Conexión interrumpida"_s);
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
    QTRY_COMPARE(m_fixture->program.mainWindow().findChildren<MdiForm*>().size(), 1);
}

void TestMainWindow::endOfTheConnectionLeavesProgrammingAndFirmware()
{
    establish();
    m_fixture->choose("mnuFirmware");
    m_fixture->choose("mnuRexistro");
    m_fixture->program.session().workflow().Desconectar();
    QCOMPARE(m_fixture->shownForms(), (QStringList{u"frmProgramPROM"_s, u"frmRexistroEstado"_s}));
    establish();
    m_fixture->choose("mnuProgramacion");
    m_fixture->program.session().workflow().Desconectar();
    QCOMPARE(ProgramFixture::modalWindow(), u"frmProgHCT7200"_s);
}

void TestMainWindow::closedWindowCanBeOpenedAgain()
{
    establish();
    m_fixture->choose("mnuInformacion");
    m_fixture->frameOf("frmInfoHCT7200")->close();
    QCOMPARE(m_fixture->shownForms(), QStringList());
    m_fixture->choose("mnuInformacion");
    QCOMPARE(m_fixture->shownForms(), QStringList{u"frmInfoHCT7200"_s});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_fixture->shownForms(), QStringList{u"frmInfoHCT7200"_s});
}

void TestMainWindow::shortBlockCrashesNoWindow()
{
    m_fixture->establish(QByteArray::fromHex("0000000500"));
    for (const char* entry : {"mnuInformacion", "mnuTelemando", "mnuSincronizacionReloxo",
                              "mnuFirmware", "mnuProgramacion"})
        m_fixture->choose(entry);
    m_fixture->tick(20);
    QCOMPARE(m_fixture->shownForms(),
             (QStringList{u"frmInfoHCT7200"_s, u"frmTelemandoHCT7200"_s,
                          u"frmSincronizacionReloxo"_s, u"frmProgramPROM"_s}));
    QCOMPARE(ProgramFixture::modalWindow(), u"frmProgHCT7200"_s);
}

void TestMainWindow::diallingKeepsTheTimerServiceStill()
{
    bool ticking = true;
    dial([&] {
        ticking = m_fixture->tmrCrono.isEnabled();
        m_fixture->program.session().link().RemataConexion();
    });
    QVERIFY(!ticking);
    // The attempt is over: its remaining requests fail because the port is closed.
    QVERIFY(m_fixture->tmrCrono.isEnabled());
    m_fixture->tick(40);
    QCOMPARE(m_fixture->logLines().last(), u"Conexión interrumpida"_s);
}

void TestMainWindow::secondConectarWhileDiallingDoesNothing()
{
    dial([&] {
        m_fixture->choose("mnuConectar");
        m_fixture->choose("mnuConectar");
        m_fixture->program.session().link().RemataConexion();
    });
    QCOMPARE(m_fixture->modem.timesOpened, 1);
    QCOMPARE(m_fixture->modem.written(), QByteArray("ATZ\r\n"));
    QCOMPARE(m_fixture->logLines().count(u"Estableciendo conexión..."_s), 1);
}

void TestMainWindow::closingWhileDiallingAbandonsIt()
{
    const QSignalSpy unloaded(&m_fixture->program.mainWindow(), &frmPrincipal::unloaded);
    dial([&] { m_fixture->choose("mnuSair"); });
    QCOMPARE(unloaded.size(), 1);
    QVERIFY(!m_fixture->modem.isOpen());
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
}

void TestMainWindow::salirEndsTheProgram()
{
    const QSignalSpy unloaded(&m_fixture->program.mainWindow(), &frmPrincipal::unloaded);
    m_fixture->choose("mnuSair");
    QCOMPARE(unloaded.size(), 1);
    QVERIFY(m_fixture->program.session().globais().ShuttingDown);
}

void TestMainWindow::titleBarEndsTheProgram()
{
    const QSignalSpy unloaded(&m_fixture->program.mainWindow(), &frmPrincipal::unloaded);
    m_fixture->program.mainWindow().close();
    QCOMPARE(unloaded.size(), 1);
    QVERIFY(!m_fixture->program.mainWindow().isVisible());
}

void TestMainWindow::closingWithTheBitClearDoesNotAsk()
{
    establish();
    const QSignalSpy unloaded(&m_fixture->program.mainWindow(), &frmPrincipal::unloaded);
    m_fixture->choose("mnuSair");
    QCOMPARE(m_fixture->dialogs.boxes.size(), 0);
    QCOMPARE(unloaded.size(), 1);
}

void TestMainWindow::closingInRemoteControlAsks()
{
    m_fixture->establish(LinkFixture::remoteControlledBlock());
    m_fixture->dialogs.confirmations = {true};
    m_fixture->choose("mnuSair");
    QCOMPARE(m_fixture->dialogs.boxes.size(), 1);
    QVERIFY(m_fixture->program.session().globais().ShuttingDown);
}

void TestMainWindow::closingRefusedKeepsEverything()
{
    m_fixture->establish(LinkFixture::remoteControlledBlock());
    m_fixture->choose("mnuInformacion");
    m_fixture->choose("mnuSair");
    QVERIFY(m_fixture->program.mainWindow().isVisible());
    QCOMPARE(m_fixture->shownForms(), QStringList{u"frmInfoHCT7200"_s});
    QVERIFY(m_fixture->serie.isOpen());
    QVERIFY(m_fixture->tmrCrono.isEnabled());
}

void TestMainWindow::windowThatRefusesKeepsTheProgram()
{
    establish();
    m_fixture->choose("mnuInformacion");
    Refuser refuser(*m_fixture->program.mainWindow().findChild<QMdiArea*>());
    m_fixture->choose("mnuSair");
    QVERIFY(m_fixture->program.mainWindow().isVisible());
    QVERIFY(m_fixture->serie.isOpen());
    QVERIFY(refuser.isFormVisible());
    QVERIFY(m_fixture->frameOf("frmInfoHCT7200"));
    refuser.refuses = false;
    m_fixture->choose("mnuSair");
    QVERIFY(m_fixture->program.session().globais().ShuttingDown);
}

void TestMainWindow::unloadOrderIsKept()
{
    establish();
    QStringList steps;
    Refuser window(*m_fixture->program.mainWindow().findChild<QMdiArea*>());
    window.refuses = false;
    window.steps = &steps;
    window.linkIsOpen = [this] { return m_fixture->serie.isOpen(); };
    connect(&m_fixture->program.session().link(), &MessageLink::VisualizaPorto, this, [&] {
        steps.append(m_fixture->program.session().globais().ShuttingDown ? u"?"_s
                                                                         : u"link ended"_s);
    });
    connect(&m_fixture->program.mainWindow(), &frmPrincipal::unloaded, this, [&] {
        steps.append(m_fixture->program.session().globais().ShuttingDown ? u"program ended"_s
                                                                         : u"?"_s);
    });
    m_fixture->choose("mnuSair");
    QCOMPARE(steps, (QStringList{u"link ended"_s, u"unloaded"_s, u"program ended"_s}));
}

void TestMainWindow::closingTwiceUnloadsOnce()
{
    const QSignalSpy unloaded(&m_fixture->program.mainWindow(), &frmPrincipal::unloaded);
    m_fixture->choose("mnuSair");
    m_fixture->program.mainWindow().close();
    m_fixture->program.mainWindow().unload();
    QCOMPARE(unloaded.size(), 1);
}

void TestMainWindow::endUnderTheQuestionIsTheEnd()
{
    m_fixture->establish(LinkFixture::remoteControlledBlock());
    const QSignalSpy unloaded(&m_fixture->program.mainWindow(), &frmPrincipal::unloaded);
    m_fixture->dialogs.whileUp = [this] { m_fixture->program.mainWindow().unload(); };
    m_fixture->choose("mnuSair");
    QCOMPARE(unloaded.size(), 1);
    QVERIFY(!m_fixture->serie.isOpen());
    QVERIFY(!m_fixture->program.mainWindow().isVisible());
}

void TestMainWindow::endingWithoutAskingClosesRefusers()
{
    m_fixture->establish(LinkFixture::remoteControlledBlock());
    const Refuser refuser(*m_fixture->program.mainWindow().findChild<QMdiArea*>());
    m_fixture->program.mainWindow().unload();
    QCOMPARE(m_fixture->dialogs.boxes.size(), 0);
    QVERIFY(!m_fixture->serie.isOpen());
    QVERIFY(m_fixture->program.session().globais().ShuttingDown);
}

void TestMainWindow::endingClosesAModalWindow()
{
    establish();
    m_fixture->choose("mnuProgramacion");
    m_fixture->program.mainWindow().unload();
    QCOMPARE(ProgramFixture::modalWindow(), QString());
}

void TestMainWindow::afterTheEndNothingTicks()
{
    establish();
    m_fixture->tick(10);
    m_fixture->choose("mnuSair");
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
    m_fixture->choose("mnuConectar");
    QVERIFY(!m_fixture->serie.isOpen());
}

QTEST_MAIN(TestMainWindow)
#include "TestMainWindow.moc"
