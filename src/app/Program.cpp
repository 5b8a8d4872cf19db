#include "Program.h"

#include "ApplicationIcon.h"
#include "ConnectionWorkflow.h"
#include "MessageLink.h"
#include "ModelWindows.h"
#include "ModemControl.h"
#include "frmAcerca.h"
#include "frmCrono.h"
#include "frmInfoHCT7200.h"
#include "frmInfoHCT7300.h"
#include "frmPortoSerie.h"
#include "frmPrincipal.h"
#include "frmProgHCT7200.h"
#include "frmProgHCT7300.h"
#include "frmProgramPROM.h"
#include "frmRexistroEstado.h"
#include "frmSincronizacionReloxo.h"
#include "frmTelemandoHCT7200.h"
#include "frmTelemandoHCT7300.h"
#include "modUtilidades.h"

#include <QApplication>
#include <QMdiArea>

using namespace Qt::StringLiterals;

Program::Program(const Outside& outside) : m_outside(outside), m_area(new QMdiArea)
{
    m_globais.applicationDirectory = outside.applicationDirectory;
    // A modem command awaits its reply too: nothing may be sent into that dialogue.
    m_crono = std::make_unique<frmCrono>(outside.tmrCrono, m_globais, [this] {
        return m_link && (m_link->Ocupado() || m_link->isModemPhase());
    });
    m_log = new frmRexistroEstado(*m_area, outside.clock);
    makeCommunications();
    makeModelWindows();
    makeMainWindow();
}

Program::~Program()
{
    // First the windows, which hold places in the timer service and exchanges of the link.
    m_mainWindow.reset();
}

void Program::makeCommunications()
{
    m_link = std::make_unique<MessageLink>(m_outside.commSerie, m_outside.commModem,
                                           m_outside.tmrTemporizador, m_outside.pause, m_settings);
    m_modem = std::make_unique<ModemControl>(*m_link, m_outside.commModem, m_settings, m_globais,
                                             m_outside.dialogs);
    m_communications = new frmPortoSerie(*m_link, *m_modem, m_settings, m_outside.registry,
                                         m_outside.portNames, m_outside.dialogs);
}

void Program::makeModelWindows()
{
    ModelWindows::Factories make;
    make.frmInfoHCT7200 = [this] { return new frmInfoHCT7200(*m_area, *m_crono, m_globais); };
    make.frmInfoHCT7300 = [this] { return new frmInfoHCT7300(*m_area, *m_crono, m_globais); };
    make.frmTelemandoHCT7200 = [this] {
        return new frmTelemandoHCT7200(*m_area, *m_crono, *m_link, m_globais);
    };
    make.frmTelemandoHCT7300 = [this] {
        return new frmTelemandoHCT7300(*m_area, *m_crono, *m_link, m_globais);
    };
    make.frmSincronizacionReloxo = [this] {
        return new frmSincronizacionReloxo(*m_area, *m_crono, *m_link, m_globais, *m_log,
                                           m_outside.dialogs, m_outside.clock);
    };
    make.frmProgramPROM = [this] {
        return new frmProgramPROM(*m_area, *m_crono, *m_link, *m_log, m_outside.dialogs);
    };
    make.frmProgHCT7200 = [this] {
        return new frmProgHCT7200(m_mainWindow.get(), *m_crono, *m_link, m_globais, *m_log,
                                  m_outside.dialogs);
    };
    make.frmProgHCT7300 = [this] {
        return new frmProgHCT7300(m_mainWindow.get(), *m_crono, *m_link, m_globais, *m_log,
                                  m_outside.dialogs);
    };
    m_models = std::make_unique<ModelWindows>(m_globais, std::move(make));
}

void Program::makeMainWindow()
{
    QApplication::setWindowIcon(applicationIcon());
    m_workflow = std::make_unique<ConnectionWorkflow>(*m_crono, *m_link, m_globais, *m_log,
                                                      m_outside.dialogs);
    const frmPrincipal::Windows windows{
        *m_log,
        *m_models,
        [this] { m_communications->open(); },
        [this] { openAbout(); },
    };
    m_mainWindow = std::make_unique<frmPrincipal>(m_area, *m_workflow, m_globais, windows);
    // A dialog is modal to the window that it belongs to.
    m_communications->setParent(m_mainWindow.get(), m_communications->windowFlags());
    QObject::connect(m_link.get(), &MessageLink::VisualizaPorto, m_mainWindow.get(),
                     &frmPrincipal::VisualizaPorto);
}

void Program::openAbout()
{
    const auto systemInformation = [this] {
        modUtilidades::systemInformation(m_outside.registry, m_outside.dialogs,
                                         m_outside.startProgram);
    };
    auto* about = new frmAcerca(m_mainWindow.get(), QStringLiteral(HCT_VERSION), systemInformation);
    about->open();
}

void Program::start()
{
    m_crono->setTimerInterval(1);
    m_mainWindow->show();
}
