#pragma once

#include "Desktop.h"
#include "Session.h"

#include <memory>

class ModelWindows;
class ModemQuestions;
class QMdiArea;
class frmPortoSerie;
class frmPrincipal;
class frmRexistroEstado;

/// A session and its windows: the whole program except its event loop. The constructor makes the
/// log, the communications settings and the main window, in this order, and shows none of them.
class Program {
public:
    Program(const Environment& environment, const Desktop& desktop);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Starts the session and shows the main window.
    void start();

    Session& session() { return *m_session; }
    frmRexistroEstado& log() { return *m_log; }
    frmPortoSerie& communications() { return *m_communications; }
    frmPrincipal& mainWindow() { return *m_mainWindow; }

private:
    void makeModelWindows();
    void makeMainWindow();
    void openAbout();

    const Desktop m_desktop;
    /// Owned by the main window.
    QMdiArea* m_area;
    frmRexistroEstado* m_log;
    frmPortoSerie* m_communications;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<ModemQuestions> m_modemQuestions;
    std::unique_ptr<ModelWindows> m_models;
    std::unique_ptr<frmPrincipal> m_mainWindow;
};
