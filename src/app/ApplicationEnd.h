#pragma once

#include "TerminationSignals.h"

class QApplication;
class QSessionManager;
class frmPrincipal;

/// Ties the end of the main window and the end of the application together, whichever comes first:
/// Salir and the title bar, the end of the session, a signal that ends the process. The last does
/// not ask: nobody may be there to answer.
class ApplicationEnd {
public:
    ApplicationEnd(QApplication& application, frmPrincipal& mainWindow);

private:
    static void closeWithSession(frmPrincipal& mainWindow, QSessionManager& session);

    TerminationSignals m_termination;
};
