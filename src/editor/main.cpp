#include "ApplicationIcon.h"
#include "EditorCommandLine.h"
#include "EditorProgram.h"
#include "PdfJob.h"
#include "PreciseTimer.h"
#include "RecentFiles.h"
#include "RecoveryFolder.h"
#include "Spanish.h"
#include "StandardStreams.h"
#include "SystemRegistry.h"
#include "TerminationSignals.h"
#include "WidgetEditorDialogs.h"

#include <QApplication>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

QStringList wordsOf(int argc, char** argv)
{
    QStringList words;
    for (int index = 0; index < argc; ++index)
        words.append(QString::fromLocal8Bit(argv[index]));
    return words;
}

int tell(const EditorAnswer& answer)
{
    tellTexts(answer.output, answer.errors, QCoreApplication::applicationName());
    return answer.status;
}

int runWithoutDisplay(int argc, char** argv)
{
#ifndef Q_OS_WIN
    // Fonts need a platform, and this one needs no display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
    const QGuiApplication application(argc, argv);
    QTranslator toolkit;
    speakSpanish(toolkit);
    const auto read = EditorCommandLine::read(QCoreApplication::arguments().mid(1));
    const auto* order = std::get_if<EditorOrder>(&read);
    if (!order)
        return tell(*std::get_if<EditorAnswer>(&read));
    const auto registry = systemRegistry();
    return tell(PdfJob::run(*order, RecentFiles(*registry)));
}

int runWithWindows(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(u"hct-editor"_s);
    QGuiApplication::setWindowIcon(applicationIcon(u"hct-editor"_s));
    QTranslator toolkit;
    speakSpanish(toolkit);
    const auto read = EditorCommandLine::read(QCoreApplication::arguments().mid(1));
    const auto* order = std::get_if<EditorOrder>(&read);
    if (!order)
        return tell(*std::get_if<EditorAnswer>(&read));

    const auto registry = systemRegistry();
    WidgetEditorDialogs dialogs;
    EditorProgram program({dialogs, *registry, RecoveryFolder::path(),
                           [] { return std::make_unique<PreciseTimer>(); }});
    const TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::arrived, &program, [&program] {
        program.keepUnsavedWork();
        // exit and not quit: with quit an open dialog could refuse.
        QCoreApplication::exit();
    });
    QObject::connect(
        qApp, &QGuiApplication::commitDataRequest, &program,
        [&program](QSessionManager& session) { program.endSession(session); },
        Qt::DirectConnection);
    program.start(order->files, order->model);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication::setApplicationName(u"hct-editor"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(HCT_VERSION));
    if (EditorCommandLine::needsNoDisplay(wordsOf(argc, argv)))
        return runWithoutDisplay(argc, argv);
    return runWithWindows(argc, argv);
}
