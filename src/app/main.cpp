#include "ApplicationEnd.h"
#include "Program.h"
#include "Spanish.h"
#include "SystemEnvironment.h"
#include "WidgetDialogs.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTranslator>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

void nameApplication()
{
    QCoreApplication::setApplicationName(u"hct"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(HCT_VERSION));
}

bool asksForText(int argc, char** argv)
{
    const QStringList texts{u"-h"_s, u"--help"_s, u"-v"_s, u"--version"_s};
    return std::any_of(argv + 1, argv + argc, [&texts](const char* argument) {
        return texts.contains(QString::fromLocal8Bit(argument));
    });
}

// The parser itself ends the process where there is a text to print.
void readCommandLine(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Control de los relojes programadores de señales HCT-7200 y HCT-7300."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);
}

} // namespace

int main(int argc, char* argv[])
{
    nameApplication();
    QTranslator toolkit;
    if (asksForText(argc, argv)) {
        // A text needs no display.
        const QCoreApplication application(argc, argv);
        speakSpanish(toolkit);
        readCommandLine(application);
    }

    QApplication application(argc, argv);
    speakSpanish(toolkit);
    readCommandLine(application);
    QGuiApplication::setDesktopFileName(u"hct"_s);

    SystemEnvironment system;
    WidgetDialogs dialogs;
    Program program(system.environment(), systemDesktop(dialogs));
    const ApplicationEnd end(application, program.mainWindow());
    program.start();
    return QCoreApplication::exec();
}
