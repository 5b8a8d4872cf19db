#include "frmPortoSerie.h"

#include "CommSettings.h"
#include "Dialogs.h"
#include "FollowingScroll.h"
#include "MessageLink.h"
#include "MiniTerminal.h"
#include "ModemControl.h"
#include "ModemPage.h"
#include "PortsPage.h"
#include "WidgetDescription.h"

#include <QDialogButtonBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QShowEvent>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmPortoSerie::frmPortoSerie(MessageLink& link, ModemControl& modem, CommSettings& settings,
                             Registry& registry, const PortNames& names, Dialogs& dialogs,
                             QWidget* parent)
    : QDialog(parent),
      m_link(link),
      m_modem(modem),
      m_settings(settings),
      m_registry(registry),
      m_names(names),
      m_dialogs(dialogs),
      txtRexistro(new MiniTerminal(this))
{
    setObjectName(u"frmPortoSerie"_s);
    setWindowTitle(u"Configuración de Comunicaciones"_s);
    describe(*txtRexistro, u"txtRexistro"_s, u"Mini Terminal"_s);
    connect(&modem, &ModemControl::terminalWritten, txtRexistro, &MiniTerminal::AppendToTerminal);
    connect(&modem, &ModemControl::controlsEnabled, this, &frmPortoSerie::EnableModemControls);
}

void frmPortoSerie::makeControls()
{
    tabOpcions = new QTabWidget(this);
    m_portsPage = new PortsPage(m_link, m_names);
    m_modemPage = new ModemPage(m_modem, *txtRexistro);
    cmdCambiar = new QPushButton(u"&Aceptar"_s, this);
    cmdCancelar = new QPushButton(u"&Cancelar"_s, this);
    tabOpcions->setObjectName(u"tabOpcions"_s);
    auto* ports = new FollowingScroll(*m_portsPage);
    ports->setFrameShape(QFrame::NoFrame);
    // The page of a tab has a colour of its own.
    ports->viewport()->setAutoFillBackground(false);
    m_portsPage->setAutoFillBackground(false);
    tabOpcions->addTab(ports, u"P&uertos de comunicación"_s);
    m_modemPage->shareAccessKey(*tabOpcions->tabBar());
    // Two access keys: the toolkit serves the first, the shortcut below the second.
    tabOpcions->addTab(m_modemPage, u"&Operación de &módem"_s);
    connect(new QShortcut(QKeySequence(Qt::ALT | Qt::Key_M), this), &QShortcut::activated, this,
            [this] { tabOpcions->setCurrentWidget(m_modemPage); });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabOpcions, 1);
    layout->addWidget(makeButtons());
    // A window that nobody has sized gets two thirds of the screen at most; this one may need more.
    resize(sizeHint().boundedTo(screen()->availableSize() * 0.94));

    connect(m_portsPage, &PortsPage::modemLineChosen, this, &frmPortoSerie::applyModemLine);
    // The devices in the tool tips may have changed when a port was opened or could not be. A
    // hidden dialog looks them up when it is shown: that takes milliseconds.
    connect(&m_link, &MessageLink::VisualizaPorto, m_portsPage, [this] {
        if (isVisible())
            m_portsPage->showDevices();
    });
    EnableModemControls(m_isModemFree);
}

QWidget* frmPortoSerie::makeButtons()
{
    describe(*cmdCambiar, u"cmdCambiar"_s, u"Aceptar"_s,
             u"Fija los valores de comunicaciones y cierra la ventana"_s);
    describe(*cmdCancelar, u"cmdCancelar"_s, u"Cancelar"_s,
             u"Cierra la ventana ignorando los cambios realizados"_s);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdCambiar, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdCancelar, QDialogButtonBox::RejectRole);
    cmdCambiar->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmPortoSerie::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmPortoSerie::reject);
    return buttons;
}

void frmPortoSerie::accept()
{
    m_portsPage->storeInto(m_settings);
    m_isApplying = true;
    m_link.ApplySettings();
    m_isApplying = false;
    const QPointer<frmPortoSerie> self(this);
    if (!m_settings.SaveSettings(m_registry))
        m_dialogs.tell(Dialogs::Icon::Critical, u"Error"_s,
                       u"No se ha podido guardar la configuración"_s);
    if (self)
        QDialog::accept();
}

void frmPortoSerie::reject()
{
    m_link.RemataConexion();
    // Closed while a port opened with the accepted settings, which are saved nevertheless.
    if (m_isApplying)
        return;
    m_link.restoreConnectionType();
    m_settings.LoadSettings(m_registry);
    m_link.ApplySettings();
    EnableModemControls(true);
    QDialog::reject();
}

void frmPortoSerie::setVisible(bool visible)
{
    // Not before: the program's start would wait for controls that are seldom used.
    if (visible && !tabOpcions)
        makeControls();
    QDialog::setVisible(visible);
}

void frmPortoSerie::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        ShowSettings();
    QDialog::showEvent(event);
}

void frmPortoSerie::ShowSettings() { m_portsPage->showSettings(m_settings); }

void frmPortoSerie::applyModemLine()
{
    m_portsPage->storeModemLineInto(m_settings);
    m_link.ApplySettings();
}

void frmPortoSerie::EnableModemControls(bool enabled)
{
    m_isModemFree = enabled;
    if (!tabOpcions)
        return;
    m_modemPage->EnableModemControls(enabled);
    cmdCambiar->setEnabled(enabled);
}
