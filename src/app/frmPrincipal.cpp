#include "frmPrincipal.h"

#include "CaptionUpdate.h"
#include "Dialogs.h"
#include "MdiForm.h"
#include "ModelWindows.h"
#include "Session.h"
#include "WidgetDescription.h"
#include "frmRexistroEstado.h"
#include "modGlobais.h"
#include "modUtilidades.h"

#include <QCloseEvent>
#include <QDialog>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace {

constexpr int areaShade = 112;

/// The window's size at the start, in characters and lines, if the screen has room for it.
constexpr int startColumns = 160;
constexpr int startLines = 46;
constexpr double mostOfTheScreen = 0.9;

/// Around the text of a panel of the status bar.
constexpr int panelIndent = 6;
constexpr int panelSpare = 24;

} // namespace

frmPrincipal::frmPrincipal(QMdiArea* area, Session& session, const Windows& windows,
                           Dialogs& dialogs)
    : m_area(area),
      m_workflow(session.workflow()),
      m_globais(session.globais()),
      m_windows(windows),
      m_dialogs(dialogs)
{
    setObjectName(u"frmPrincipal"_s);
    setWindowTitle(u"RELOJ PROGRAMADOR DE SEÑALES HCT"_s);
    setCentralWidget(m_area);
    // So that windows outside the visible area can be reached.
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    colourArea();
    makeCommunicationsMenu();
    makeDeviceMenu();
    makeHelpMenu();
    makeStatusBar();

    connect(&m_workflow, &ConnectionWorkflow::clockCommandsUnlocked, this,
            [this] { unlockClockCommands(true); });
    connect(&m_workflow, &ConnectionWorkflow::clockCommandsLocked, this,
            [this] { unlockClockCommands(false); });
    connect(&m_workflow, &ConnectionWorkflow::clockWindowsOutdated, this,
            [this] { m_windows.models.closeClockWindows(); });
    connect(&m_workflow, &ConnectionWorkflow::connectionStatusChanged, this,
            &frmPrincipal::ShowConnectionStatus);
    resizeToScreen();
}

void frmPrincipal::makeCommunicationsMenu()
{
    QMenu* menu = addMenu(u"mnuComunicacions"_s, u"&Comunicaciones"_s);
    mnuConectar = addEntry(menu, u"mnuConectar"_s, u"&Conectar"_s);
    mnuDesconectar = addEntry(menu, u"mnuDesconectar"_s, u"&Desconectar"_s);
    addSeparator(menu, u"mnuSeparador3"_s);
    mnuUsarModem = addEntry(menu, u"mnuUsarModem"_s, u"&Utilizar módem"_s);
    mnuUsarModem->setCheckable(true);
    addSeparator(menu, u"mnuSeparador2"_s);
    QAction* mnuRexistro = addEntry(menu, u"mnuRexistro"_s, u"&Registro de Estado"_s);
    mnuConfiguracion = addEntry(menu, u"mnuConfiguracion"_s, u"Con&figuración..."_s);
    addSeparator(menu, u"mnuSeparador4"_s);
    QAction* mnuSair = addEntry(menu, u"mnuSair"_s, u"&Salir"_s);

    connect(mnuConectar, &QAction::triggered, this,
            [this] { m_workflow.Conectar(mnuUsarModem->isChecked()); });
    connect(mnuDesconectar, &QAction::triggered, this, &frmPrincipal::Desconectar);
    connect(mnuRexistro, &QAction::triggered, this, [this] { m_windows.log.showForm(); });
    connect(mnuConfiguracion, &QAction::triggered, this, [this] { m_windows.showSettings(); });
    connect(mnuSair, &QAction::triggered, this, &QWidget::close);
}

void frmPrincipal::makeDeviceMenu()
{
    QMenu* menu = addMenu(u"mnuEquipo"_s, u"&Equipo"_s);
    mnuInformacion = addEntry(menu, u"mnuInformacion"_s, u"&Información general"_s);
    mnuSincronizacionReloxo =
        addEntry(menu, u"mnuSincronizacionReloxo"_s, u"&Sincronización reloj"_s);
    mnuTelemando = addEntry(menu, u"mnuTelemando"_s, u"&Telemando"_s);
    // Entries for other families of clocks, always hidden for this family.
    addEntry(menu, u"mnuIncidencias"_s, u"I&ncidencias"_s)->setVisible(false);
    mnuSeparadorAux = addSeparator(menu, u"mnuSeparadorAux"_s);
    addEntry(menu, u"mnuAux1"_s, u"&Aux1"_s)->setVisible(false);
    addEntry(menu, u"mnuAux2"_s, u"&Aux2"_s)->setVisible(false);
    addEntry(menu, u"mnuAux3"_s, u"&Aux3"_s)->setVisible(false);
    mnuSeparadorProgramacion = addSeparator(menu, u"mnuSeparadorProgramacion"_s);
    mnuProgramacion = addEntry(menu, u"mnuProgramacion"_s, u"&Programación"_s);
    mnuSeparadorFirmware = addSeparator(menu, u"mnuSeparadorFirmware"_s);
    mnuFirmware = addEntry(menu, u"mnuFirmware"_s, u"&Actualizar firmware"_s);

    ModelWindows* models = &m_windows.models;
    connect(mnuInformacion, &QAction::triggered, models, &ModelWindows::openInformation);
    connect(mnuSincronizacionReloxo, &QAction::triggered, models,
            &ModelWindows::openSynchronisation);
    connect(mnuTelemando, &QAction::triggered, models, &ModelWindows::openRemoteControl);
    connect(mnuProgramacion, &QAction::triggered, models, &ModelWindows::openProgramming);
    connect(mnuFirmware, &QAction::triggered, models, &ModelWindows::openFirmware);
}

void frmPrincipal::makeHelpMenu()
{
    QMenu* menu = addMenu(u"mnuAxuda"_s, u"&Ayuda"_s);
    // Always disabled: there is no manual that the program can show.
    addEntry(menu, u"mnuTemasAxuda"_s, u"&Manual de la aplicación"_s)->setEnabled(false);
    addSeparator(menu, u"mnuSeparador5"_s);
    QAction* mnuAcerca = addEntry(menu, u"mnuAcerca"_s, u"&Acerca de"_s);
    mnuAcerca->setText(u"Acerca de "_s + applicationTitle());
    connect(mnuAcerca, &QAction::triggered, this, [this] { m_windows.showAbout(); });
}

QMenu* frmPrincipal::addMenu(const QString& name, const QString& caption)
{
    QMenu* menu = menuBar()->addMenu(caption);
    menu->setObjectName(name);
    return menu;
}

QAction* frmPrincipal::addEntry(QMenu* menu, const QString& name, const QString& caption)
{
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    return action;
}

QAction* frmPrincipal::addSeparator(QMenu* menu, const QString& name)
{
    QAction* separator = menu->addSeparator();
    separator->setObjectName(name);
    return separator;
}

void frmPrincipal::makeStatusBar()
{
    statusBar()->setObjectName(u"stbBarra"_s);
    m_connectionPanel = addPanel(u"stbBarra(1)"_s, u"Estado de la conexión"_s, 0);
    m_modelPanel = addPanel(u"stbBarra(2)"_s, u"Modelo del equipo conectado"_s, 1);
    m_portPanel = addPanel(u"stbBarra(3)"_s, u"Puerto en uso"_s, 2);
    const QFontMetrics metrics = m_connectionPanel->fontMetrics();
    m_connectionPanel->setMinimumWidth(metrics.horizontalAdvance(u"Desconectado"_s) + panelSpare);
}

QLabel* frmPrincipal::addPanel(const QString& name, const QString& description, int stretch)
{
    // No accessible name: screen readers read the text of the panel.
    auto* panel = new QLabel;
    panel->setObjectName(name);
    panel->setAccessibleDescription(description);
    panel->setTextFormat(Qt::PlainText);
    panel->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
    panel->setIndent(panelIndent);
    statusBar()->addWidget(panel, stretch);
    return panel;
}

void frmPrincipal::VisualizaPorto(const QString& text, const QString& toolTip)
{
    modUtilidades::updateCaption(*m_portPanel, text);
    m_portPanel->setToolTip(literalToolTip(toolTip));
    m_portPanel->setAccessibleDescription(toolTip.isEmpty() ? u"Puerto en uso"_s : toolTip);
}

void frmPrincipal::unlockClockCommands(bool unlocked)
{
    for (QAction* action : {mnuDesconectar, mnuInformacion, mnuSincronizacionReloxo})
        action->setEnabled(unlocked);
    for (QAction* action : {mnuConectar, mnuConfiguracion, mnuUsarModem})
        action->setEnabled(!unlocked);
    for (QAction* action : {mnuTelemando, mnuSeparadorProgramacion, mnuProgramacion,
                            mnuSeparadorFirmware, mnuFirmware})
        action->setVisible(unlocked);
    mnuSeparadorAux->setVisible(false);
}

void frmPrincipal::ShowConnectionStatus(bool connected)
{
    modUtilidades::updateCaption(*m_connectionPanel,
                                 connected ? u"Conectado"_s : u"Desconectado"_s);
    const QString model =
        modUtilidades::modelName(static_cast<qint16>(m_globais.DeviceType), m_globais.GeneralData);
    modUtilidades::updateCaption(*m_modelPanel, connected ? u"Equipo: "_s + model : QString());
}

QList<QPointer<MdiForm>> frmPrincipal::openForms() const
{
    QList<QPointer<MdiForm>> forms;
    for (const QMdiSubWindow* frame : m_area->subWindowList())
        if (auto* form = qobject_cast<MdiForm*>(frame->widget()))
            forms.append(form);
    return forms;
}

void frmPrincipal::Desconectar()
{
    const QPointer<frmPrincipal> self(this);
    if (ConfirmExit() && self)
        m_workflow.Desconectar();
}

bool frmPrincipal::ConfirmExit()
{
    if (!m_workflow.exitNeedsConsent())
        return true;
    return m_dialogs.confirm(Dialogs::Icon::Warning, applicationTitle(),
                             u"El HCT se encuentra funcionando en modo telemandado. ¿Seguro\n"
                             "que desea salir de la aplicación dejándolo en ese modo?"_s);
}

bool frmPrincipal::queryUnload()
{
    if (m_asking)
        return false;
    m_asking = true;
    bool agreed = !m_globais.LinkEstablished || ConfirmExit();
    for (const QPointer<MdiForm>& form : openForms())
        agreed = agreed && (!form || form->mayUnload(MdiForm::CloseReason::Shutdown));
    m_asking = false;
    return agreed;
}

void frmPrincipal::unload()
{
    if (m_unloaded)
        return;
    m_unloaded = true;
    m_workflow.unload();
    for (const QPointer<MdiForm>& form : openForms())
        if (form)
            form->unloadNow();
    for (QDialog* dialog : findChildren<QDialog*>())
        dialog->hide();
    hide();
    emit unloaded();
}

void frmPrincipal::closeEvent(QCloseEvent* event)
{
    event->setAccepted(m_unloaded || queryUnload() || m_unloaded);
    if (event->isAccepted())
        unload();
}

void frmPrincipal::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        colourArea();
    QMainWindow::changeEvent(event);
}

// Slightly different from the colour of windows, in light and dark styles.
void frmPrincipal::colourArea()
{
    m_area->setBackground(palette().color(QPalette::Window).darker(areaShade));
}

// By itself a window gets two thirds of the screen at most, too little on a small screen.
void frmPrincipal::resizeToScreen()
{
    const QFontMetrics metrics = fontMetrics();
    const QSize wanted(metrics.averageCharWidth() * startColumns,
                       metrics.lineSpacing() * startLines);
    resize(wanted.boundedTo(screen()->availableSize() * mostOfTheScreen));
}
