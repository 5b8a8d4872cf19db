// A minimal window with an MDI area, with which the start of the program is compared. With "text"
// it has a menu bar and a status bar too: the toolkit must then find a font, which takes longer
// than the rest.

#include "Figures.h"
#include "FirstWindow.h"

#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenuBar>
#include <QStatusBar>

using namespace Qt::StringLiterals;

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new QMdiArea);
    if (QCoreApplication::arguments().contains(u"text"_s)) {
        window.menuBar()->addMenu(u"&Ventana"_s)->addAction(u"&Cerrar"_s);
        window.statusBar()->showMessage(u"Desconectado"_s);
    }
    window.resize(1024, 700);
    const FirstWindow first(window, figures::printFirstWindow);
    window.show();
    return QCoreApplication::exec();
}
