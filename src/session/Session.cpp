#include "Session.h"

Session::Session(const Environment& environment, StatusLog& log)
    : m_environment(environment),
      m_log(log),
      m_link(environment.commSerie, environment.commModem, environment.tmrTemporizador,
             environment.pause, m_settings),
      m_modem(m_link, environment.commModem, m_settings),
      // A modem command awaits its reply too: nothing may be sent into that dialogue.
      m_crono(environment.tmrCrono, m_globais, [this] { return m_link.isOccupied(); }),
      m_workflow(m_crono, m_link, m_globais, log)
{
    QObject::connect(&m_link, &MessageLink::occupationChanged, &m_crono, &frmCrono::ocupadoChanged);
    m_globais.applicationDirectory = environment.applicationDirectory;
    m_link.stopTimer();
    m_settings.LoadSettings(environment.registry);
    m_link.ApplySettings();
}

void Session::start() { m_workflow.load(); }
