#include "EditorCommandLine.h"
#include "PdfJob.h"
#include "RecentFiles.h"
#include "Spanish.h"
#include "StandardStreams.h"
#include "SystemRegistry.h"

#include <QGuiApplication>
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
    if (const int* status = std::get_if<int>(&read))
        return *status;
    const auto registry = systemRegistry();
    return PdfJob::run(std::get<EditorOrder>(read), RecentFiles(*registry));
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication::setApplicationName(u"hct-editor"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(HCT_VERSION));
    if (EditorCommandLine::needsNoDisplay(wordsOf(argc, argv)))
        return runWithoutDisplay(argc, argv);
    writeText(stderr, u"Falta --pdf.\n"_s);
    return EditorCommandLine::failure;
}
