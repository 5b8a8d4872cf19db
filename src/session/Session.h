#pragma once

#include "CommSettings.h"
#include "ConnectionWorkflow.h"
#include "Environment.h"
#include "MessageLink.h"
#include "ModemControl.h"
#include "frmCrono.h"
#include "modGlobais.h"

class StatusLog;

/// Everything that is needed to talk to one clock, without a window: settings, ports, link, modem,
/// timer service, connection workflow and shared state. Several sessions can live in one process,
/// each with its own environment.
///
/// The constructor reads the settings and applies them to the ports, which stay closed. A
/// connection through a modem waits until somebody answers the questions of modem(): dial() for
/// numberWanted, acknowledgeFailure() for failed, and so on. The destructor does not end the
/// connection: workflow().unload() does.
class Session {
public:
    Session(const Environment& environment, StatusLog& log);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Call once, after the signals are connected: brings the connection into its first state.
    void start();

    const Environment& environment() const { return m_environment; }
    StatusLog& log() { return m_log; }
    modGlobais& globais() { return m_globais; }
    CommSettings& settings() { return m_settings; }
    MessageLink& link() { return m_link; }
    ModemControl& modem() { return m_modem; }
    frmCrono& crono() { return m_crono; }
    ConnectionWorkflow& workflow() { return m_workflow; }

private:
    const Environment m_environment;
    StatusLog& m_log;
    modGlobais m_globais;
    CommSettings m_settings;
    MessageLink m_link;
    ModemControl m_modem;
    frmCrono m_crono;
    ConnectionWorkflow m_workflow;
};
