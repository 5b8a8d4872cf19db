#include "SystemOutside.h"
#include "TerminationSignals.h"
#include "frmPrincipal.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLibraryInfo>
#include <QSessionManager>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

void nameApplication()
{
    QCoreApplication::setApplicationName(u"hct"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(HCT_VERSION));
}

// The parser ends the process itself, before there is any need of a display.
void answerCommandLine(int& argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    nameApplication();
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Control de los relojes programadores de señales HCT-7200 y HCT-7300."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);
}

void speakSpanish(QTranslator& toolkit)
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    if (toolkit.load(u"qtbase_es"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&toolkit);
}

void closeWithSession(frmPrincipal& mainWindow, QSessionManager& session)
{
    if (!session.allowsInteraction())
        return;
    if (mainWindow.queryUnload())
        mainWindow.unload();
    else
        session.cancel();
    session.release();
}

} // namespace

int main(int argc, char* argv[])
{
    answerCommandLine(argc, argv);

    const QApplication application(argc, argv);
    nameApplication();
    QGuiApplication::setApplicationDisplayName(QString());
    QGuiApplication::setDesktopFileName(u"hct"_s);
    QTranslator toolkit;
    speakSpanish(toolkit);

    SystemOutside system;
    Program program(system.outside());
    frmPrincipal& mainWindow = program.mainWindow();
    QObject::connect(&mainWindow, &frmPrincipal::unloaded, &application, &QCoreApplication::quit);
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &mainWindow,
                     &frmPrincipal::unload);
    QObject::connect(
        &application, &QGuiApplication::commitDataRequest, &mainWindow,
        [&mainWindow](QSessionManager& session) { closeWithSession(mainWindow, session); });
    const TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::arrived, &mainWindow,
                     &frmPrincipal::unload);
    program.start();
    return QCoreApplication::exec();
}
