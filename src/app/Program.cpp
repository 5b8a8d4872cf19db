#include "Program.h"

#include "ConnectionWorkflow.h"
#include "MessageLink.h"
#include "ModelWindows.h"
#include "Registry.h"
#include "frmCrono.h"
#include "frmInfoHCT7200.h"
#include "frmInfoHCT7300.h"
#include "frmPrincipal.h"
#include "frmRexistroEstado.h"

#include <QMdiArea>

Program::Program(const Outside& outside) : m_outside(outside), m_area(new QMdiArea)
{
    m_globais.applicationDirectory = outside.applicationDirectory;
    m_crono = std::make_unique<frmCrono>(outside.tmrCrono, m_globais,
                                         [this] { return m_link && m_link->Ocupado(); });
    m_log = new frmRexistroEstado(*m_area, outside.clock);
    m_link = std::make_unique<MessageLink>(outside.commSerie, outside.commModem,
                                           outside.tmrTemporizador, outside.pause, m_settings);
    m_settings.LoadSettings(outside.registry);
    m_link->ApplySettings();
    makeModelWindows();
    makeMainWindow();
}

Program::~Program()
{
    // First the windows, which hold places in the timer service and exchanges of the link.
    m_mainWindow.reset();
}

void Program::makeModelWindows()
{
    ModelWindows::Factories factories;
    factories.frmInfoHCT7200 = [this] { return new frmInfoHCT7200(*m_area, *m_crono, m_globais); };
    factories.frmInfoHCT7300 = [this] { return new frmInfoHCT7300(*m_area, *m_crono, m_globais); };
    m_models = std::make_unique<ModelWindows>(m_globais, std::move(factories));
}

void Program::makeMainWindow()
{
    m_workflow = std::make_unique<ConnectionWorkflow>(*m_crono, *m_link, m_globais, *m_log,
                                                      m_outside.dialogs);
    const frmPrincipal::Windows windows{*m_log, *m_models, [] {}, [](QWidget&) {}};
    m_mainWindow = std::make_unique<frmPrincipal>(m_area, *m_workflow, m_globais, windows);
    QObject::connect(m_link.get(), &MessageLink::VisualizaPorto, m_mainWindow.get(),
                     &frmPrincipal::VisualizaPorto);
}

void Program::start()
{
    m_crono->setTimerInterval(1);
    m_mainWindow->show();
}
