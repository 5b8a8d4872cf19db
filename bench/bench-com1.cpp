// Measurements of the whole program with a clock on COM1 that are the same on every system:
//   bench-com1 polls SECONDS    status exchanges a second
//   bench-com1 first-window     when its first window is painted, in microseconds since 1970
//   bench-com1 minimal-window   the same for a window with nothing but an MDI area and a menu

#include "FirstWindow.h"
#include "MessageLink.h"
#include "Program.h"
#include "SystemEnvironment.h"
#include "WidgetDialogs.h"
#include "frmPrincipal.h"

#include <QAction>
#include <QApplication>
#include <QEventLoop>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

void printAndExit(qint64 moment)
{
    std::printf("%lld\n", static_cast<long long>(moment));
    std::fflush(stdout);
    std::_Exit(0);
}

int showMinimalWindow()
{
    QMainWindow window;
    window.setCentralWidget(new QMdiArea);
    window.menuBar()->addMenu(u"&Ventana"_s)->addAction(u"&Cerrar"_s);
    window.statusBar()->showMessage(u"Desconectado"_s);
    window.resize(1024, 700);
    const FirstWindow first(window, printAndExit);
    window.show();
    return QCoreApplication::exec();
}

int showProgram()
{
    SystemEnvironment system;
    WidgetDialogs dialogs;
    Program program(system.environment(), systemDesktop(dialogs));
    const FirstWindow first(program.mainWindow(), printAndExit);
    program.start();
    return QCoreApplication::exec();
}

void letEventsRun(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

int measurePolls(int seconds)
{
    SystemEnvironment system;
    WidgetDialogs dialogs;
    Program program(system.environment(), systemDesktop(dialogs));
    program.start();
    program.mainWindow().findChild<QAction*>(u"mnuConectar"_s)->trigger();
    for (int tries = 0; tries < 300 && !program.session().globais().LinkEstablished; ++tries)
        letEventsRun(100);
    if (!program.session().globais().LinkEstablished) {
        std::fprintf(stderr, "no connection with the clock behind COM1\n");
        return 1;
    }
    int answers = 0;
    QObject::connect(&program.session().link(), &MessageLink::becameIdle, &program.mainWindow(),
                     [&answers] { ++answers; });
    letEventsRun(1000);
    answers = 0;
    const auto begin = std::chrono::steady_clock::now();
    letEventsRun(seconds * 1000);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
    std::printf("%.2f\n", answers / elapsed.count());
    std::fflush(stdout);
    program.mainWindow().unload();
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString what = arguments.value(1);
    if (what == u"polls"_s)
        return measurePolls(arguments.value(2, u"10"_s).toInt());
    if (what == u"first-window"_s)
        return showProgram();
    if (what == u"minimal-window"_s)
        return showMinimalWindow();
    std::fprintf(stderr, "usage: bench-com1 polls SECONDS | first-window | minimal-window\n");
    return 2;
}
