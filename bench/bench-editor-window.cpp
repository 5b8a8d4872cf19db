// The start of hct-editor until its first window is painted; with "rows", until the rows of its
// alarms are, which it makes after that. With "bare" it is a window with a menu and a toolbar
// alone, with which both are compared.

#include "EditorProgram.h"
#include "Figures.h"
#include "FileRegistry.h"
#include "FirstWindow.h"
#include "PreciseTimer.h"
#include "Spanish.h"
#include "WidgetEditorDialogs.h"
#include "frmEditor.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QToolBar>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

int showBareWindow()
{
    QMainWindow window;
    window.menuBar()->addMenu(u"&Archivo"_s)->addAction(u"&Cerrar"_s);
    window.addToolBar(u"Archivo"_s)->addAction(u"Cerrar"_s);
    window.statusBar()->showMessage(u"Sin problemas"_s);
    window.resize(1024, 700);
    const FirstWindow first(window, figures::printFirstWindow);
    window.show();
    return QCoreApplication::exec();
}

int showEditor(const char* painted)
{
    QTranslator toolkit;
    speakSpanish(toolkit);
    const QTemporaryDir folder;
    FileRegistry registry(folder.filePath(u"registry.reg"_s));
    WidgetEditorDialogs dialogs;
    EditorProgram program({dialogs, registry, folder.filePath(u"recovery"_s),
                           [] { return std::make_unique<PreciseTimer>(); }});
    program.start({});
    const FirstWindow first(*program.windows().constFirst(), figures::printFirstWindow, painted);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.contains(u"bare"_s))
        return showBareWindow();
    return showEditor(words.contains(u"rows"_s) ? "AlarmGrid" : "QWidget");
}
