#include "Dialogs.h"
#include "Program.h"
#include "Spanish.h"
#include "SystemEnvironment.h"
#include "Tour.h"
#include "frmPrincipal.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTextStream>
#include <QTimer>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

struct Options {
    bool throughModem = false;
    QString picture;
    QString folder;
};

Options readCommandLine(const QCoreApplication& application)
{
    const QCommandLineOption modem(u"modem"_s, u"Connects through the modem."_s);
    const QCommandLineOption picture(u"picture"_s, u"Pictures the connected program."_s, u"file"_s);
    const QCommandLineOption all(u"all"_s, u"Pictures every window, into a folder."_s, u"folder"_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Starts the program, connects to the clock, prints what it shows and takes pictures."_s);
    parser.addHelpOption();
    parser.addOptions({modem, picture, all});
    parser.process(application);
    return {parser.isSet(modem), parser.value(picture), parser.value(all)};
}

/// Nobody is there to answer: boxes are printed and agreed to, and the modem gets a number to dial.
class TourDialogs final : public Dialogs {
public:
    void tell(Icon, const QString& title, const QString& text) override { print(title, text); }
    bool confirm(Icon, const QString& title, const QString& text) override
    {
        print(title, text);
        return true;
    }
    std::optional<QString> askText(const QString&, const QString&) override
    {
        return u"600123456"_s;
    }
    QString openFile(const FileRequest&) override { return {}; }
    QString saveFile(const FileRequest&) override { return {}; }

private:
    static void print(const QString& title, const QString& text)
    {
        QTextStream(stderr) << title << ": " << text << Qt::endl;
    }
};

int walk(Program& program, const Options& options)
{
    QTextStream out(stdout);
    QTextStream err(stderr);
    Tour tour(program.mainWindow());
    const QStringList values =
        tour.connectToClock(options.throughModem) ? tour.readClock() : QStringList();
    if (values.isEmpty()) {
        err << "No clock answered. The status log says:\n" << tour.log().join(u'\n') << Qt::endl;
        return 1;
    }
    out << "The clock shows:\n  " << values.join(u"\n  "_s) << Qt::endl;
    if (!options.picture.isEmpty() && !tour.savePicture(options.picture)) {
        err << "Cannot write " << options.picture << Qt::endl;
        return 1;
    }
    if (!options.folder.isEmpty() &&
        !(QDir().mkpath(options.folder) && tour.savePictures(QDir(options.folder)))) {
        err << "Not every window could be pictured in " << options.folder << Qt::endl;
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"hct-tour"_s);
    const Options options = readCommandLine(application);
    QTranslator toolkit;
    speakSpanish(toolkit);

    SystemEnvironment system;
    TourDialogs dialogs;
    Program program(system.environment(), systemDesktop(dialogs));
    program.start();
    int result = 1;
    QTimer::singleShot(0, &program.mainWindow(), [&] {
        result = walk(program, options);
        program.mainWindow().unload();
        QCoreApplication::quit();
    });
    QCoreApplication::exec();
    return result;
}
