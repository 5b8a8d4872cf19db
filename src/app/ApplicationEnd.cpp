#include "ApplicationEnd.h"

#include "frmPrincipal.h"

#include <QApplication>
#include <QSessionManager>

ApplicationEnd::ApplicationEnd(QApplication& application, frmPrincipal& mainWindow)
{
    // The program ends when its main window has unloaded, not when its last window is hidden.
    QApplication::setQuitOnLastWindowClosed(false);
    // exit and not quit: with quit an open dialog could refuse.
    QObject::connect(&mainWindow, &frmPrincipal::unloaded, &application,
                     [] { QCoreApplication::exit(); });
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &mainWindow,
                     &frmPrincipal::unload);
    QObject::connect(&m_termination, &TerminationSignals::arrived, &mainWindow,
                     &frmPrincipal::unload);
    QObject::connect(
        &application, &QGuiApplication::commitDataRequest, &mainWindow,
        [&mainWindow](QSessionManager& session) { closeWithSession(mainWindow, session); },
        Qt::DirectConnection);
}

void ApplicationEnd::closeWithSession(frmPrincipal& mainWindow, QSessionManager& session)
{
    if (!session.allowsInteraction())
        return;
    if (mainWindow.queryUnload())
        mainWindow.unload();
    else
        session.cancel();
    session.release();
}
