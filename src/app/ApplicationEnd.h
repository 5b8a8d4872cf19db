#pragma once

#include "TerminationSignals.h"

class QApplication;
class QSessionManager;
class frmPrincipal;

/// Ends the application when the main window closes, and closes the main window when the
/// application must end: at the end of the desktop session, or by a signal. After a signal the
/// operator is not asked, because nobody may be there to answer.
class ApplicationEnd {
public:
    ApplicationEnd(QApplication& application, frmPrincipal& mainWindow);

private:
    static void closeWithSession(frmPrincipal& mainWindow, QSessionManager& session);

    TerminationSignals m_termination;
};
