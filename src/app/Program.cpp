#include "Program.h"

#include "ApplicationIcon.h"
#include "Dialogs.h"
#include "ModelWindows.h"
#include "ModemQuestions.h"
#include "frmAcerca.h"
#include "frmInfo.h"
#include "frmPortoSerie.h"
#include "frmPrincipal.h"
#include "frmProg.h"
#include "frmProgramPROM.h"
#include "frmRexistroEstado.h"
#include "frmSincronizacionReloxo.h"
#include "frmTelemando.h"
#include "modUtilidades.h"

#include <QApplication>
#include <QMdiArea>

using namespace Qt::StringLiterals;

Program::Program(const Environment& environment, const Desktop& desktop)
    : m_desktop(desktop),
      m_area(new QMdiArea),
      m_log(new frmRexistroEstado(*m_area, environment.clock)),
      m_session(std::make_unique<Session>(environment, *m_log)),
      m_modemQuestions(std::make_unique<ModemQuestions>(m_session->modem(), desktop.dialogs,
                                                        m_session->globais().applicationDirectory))
{
    m_communications =
        new frmPortoSerie(m_session->link(), m_session->modem(), m_session->settings(),
                          environment.registry, environment.portNames, desktop.dialogs);
    makeModelWindows();
    makeMainWindow();
}

Program::~Program()
{
    // The windows first: they are clients of the timer service and have exchanges of the link.
    m_mainWindow.reset();
}

void Program::makeModelWindows()
{
    Session& session = *m_session;
    frmCrono& crono = session.crono();
    MessageLink& link = session.link();
    modGlobais& globais = session.globais();
    Dialogs& dialogs = m_desktop.dialogs;
    ModelWindows::Factories make;
    make.frmInfoHCT7200 = [&, this] { return new frmInfoHCT7200(*m_area, crono, globais); };
    make.frmInfoHCT7300 = [&, this] { return new frmInfoHCT7300(*m_area, crono, globais); };
    make.frmTelemandoHCT7200 = [&, this] {
        return new frmTelemandoHCT7200(*m_area, crono, link, globais);
    };
    make.frmTelemandoHCT7300 = [&, this] {
        return new frmTelemandoHCT7300(*m_area, crono, link, globais);
    };
    make.frmSincronizacionReloxo = [&, this] {
        return new frmSincronizacionReloxo(*m_area, crono, link, globais, *m_log, dialogs,
                                           session.environment().clock);
    };
    make.frmProgramPROM = [&, this] {
        return new frmProgramPROM(*m_area, crono, link, *m_log, dialogs);
    };
    make.frmProgHCT7200 = [&, this] {
        return new frmProgHCT7200(m_mainWindow.get(), crono, link, globais, *m_log, dialogs);
    };
    make.frmProgHCT7300 = [&, this] {
        return new frmProgHCT7300(m_mainWindow.get(), crono, link, globais, *m_log, dialogs);
    };
    m_models = std::make_unique<ModelWindows>(globais, std::move(make));
}

void Program::makeMainWindow()
{
    QApplication::setWindowIcon(applicationIcon(u"hct"_s));
    const frmPrincipal::Windows windows{
        *m_log,
        *m_models,
        [this] { m_communications->open(); },
        [this] { openAbout(); },
    };
    m_mainWindow = std::make_unique<frmPrincipal>(m_area, *m_session, windows, m_desktop.dialogs);
    // A dialog is modal to its parent.
    m_communications->setParent(m_mainWindow.get(), m_communications->windowFlags());
    QObject::connect(&m_session->link(), &MessageLink::VisualizaPorto, m_mainWindow.get(),
                     &frmPrincipal::VisualizaPorto);
}

void Program::openAbout()
{
    const auto systemInformation = [this] {
        if (!modUtilidades::systemInformation(m_session->environment().registry,
                                              m_desktop.startProgram))
            m_desktop.dialogs.tell(
                Dialogs::Icon::Information, applicationTitle(),
                u"La información del sistema no está disponible en este momento"_s);
    };
    auto* about = new frmAcerca(m_mainWindow.get(), QStringLiteral(HCT_VERSION), systemInformation);
    about->open();
}

void Program::start()
{
    m_session->start();
    m_mainWindow->show();
}
