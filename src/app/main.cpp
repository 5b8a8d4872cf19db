#include "ApplicationEnd.h"
#include "Program.h"
#include "Spanish.h"
#include "StandardStreams.h"
#include "SystemEnvironment.h"
#include "TraceFile.h"
#include "WidgetDialogs.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <QTranslator>

#include <algorithm>
#include <cstdio>
#include <optional>

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

struct Options {
    /// The file that --trace names.
    std::optional<QString> trace;
};

// The parser itself ends the process where there is a text to print.
Options readCommandLine(const QCoreApplication& application)
{
    const QCommandLineOption trace(
        u"trace"_s, u"Escribe en <archivo>, para el servicio técnico, lo que pasa por la línea."_s,
        u"archivo"_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Control de los relojes programadores de señales HCT-7200 y HCT-7300."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(trace);
    parser.process(application);
    Options options;
    if (parser.isSet(trace))
        options.trace = parser.value(trace);
    return options;
}

// On Windows a program with windows has no standard error.
void tellError(const QString& text)
{
#ifdef Q_OS_WIN
    QMessageBox::critical(nullptr, u"HCT"_s, text);
#else
    std::fprintf(stderr, "%s\n", qPrintable(text));
#endif
}

} // namespace

int main(int argc, char* argv[])
{
    const auto programStart = std::chrono::steady_clock::now();
    occupyClosedStreams();
    nameApplication();
    QTranslator toolkit;
    if (asksForText(argc, argv)) {
        // To print a text no display is needed.
        const QCoreApplication application(argc, argv);
        speakSpanish(toolkit);
        readCommandLine(application);
    }

    QApplication application(argc, argv);
    speakSpanish(toolkit);
    const Options options = readCommandLine(application);
    QGuiApplication::setDesktopFileName(u"hct"_s);

    std::optional<TraceFile> trace;
    if (options.trace) {
        trace.emplace(*options.trace, programStart);
        if (!trace->isOpen()) {
            tellError(trace->error());
            return 1;
        }
    }

    SystemEnvironment system;
    WidgetDialogs dialogs;
    Program program(system.environment(), systemDesktop(dialogs));
    const ApplicationEnd end(application, program.mainWindow());
    program.start();
    return QCoreApplication::exec();
}
