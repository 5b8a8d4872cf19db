#include "ProgramFixture.h"

#include "LinkFixture.h"
#include "LogText.h"
#include "frmPrincipal.h"
#include "frmRexistroEstado.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>

using namespace Qt::StringLiterals;

namespace {

QString className(const QObject* object)
{
    return QString::fromLatin1(object->metaObject()->className());
}

} // namespace

ProgramFixture::ProgramFixture()
    : program({.registry = registry,
               .portNames = portNames,
               .commSerie = serie,
               .commModem = modem,
               .tmrCrono = tmrCrono,
               .tmrTemporizador = tmrTemporizador,
               .pause = pause,
               .clock = clock,
               .applicationDirectory = u"/opt/hct/"_s},
              {.dialogs = dialogs, .startProgram = [this](const QString& name) {
                   started.append(name);
                   return true;
               }})
{
    program.start();
}

QAction* ProgramFixture::action(const char* name)
{
    return program.mainWindow().findChild<QAction*>(QString::fromLatin1(name));
}

void ProgramFixture::choose(const char* name)
{
    if (QAction* entry = action(name); entry && entry->isVisible())
        entry->trigger();
}

QString ProgramFixture::panel(int number) { return panelLabel(number)->text(); }

QLabel* ProgramFixture::panelLabel(int number)
{
    return program.mainWindow().findChild<QLabel*>(u"stbBarra(%1)"_s.arg(number));
}

QStringList ProgramFixture::logLines()
{
    const auto* txtRexistro = program.log().findChild<LogText*>(u"txtRexistro"_s);
    QStringList lines = txtRexistro->toPlainText().split(u'\n', Qt::SkipEmptyParts);
    for (QString& line : lines)
        line = line.section(u" :: "_s, 1);
    return lines;
}

void ProgramFixture::tick(int times)
{
    while (times-- > 0 && tmrCrono.fire()) {
    }
}

void ProgramFixture::answer(const QByteArray& body)
{
    FakeSerialPort& line = modem.isOpen() ? modem : serie;
    line.arrive(LinkFixture::frame(1, 8, body));
}

void ProgramFixture::establish(const QByteArray& block)
{
    choose("mnuConectar");
    tick(10);
    answer(QByteArray::fromHex("0200"));
    tick(10);
    answer(block);
}

QStringList ProgramFixture::shownForms()
{
    QStringList classes;
    for (const QMdiSubWindow* frame : program.mainWindow().findChild<QMdiArea*>()->subWindowList())
        if (frame->isVisible())
            classes.append(className(frame->widget()));
    return classes;
}

QMdiSubWindow* ProgramFixture::frameOf(const char* formClass)
{
    for (QMdiSubWindow* frame : program.mainWindow().findChild<QMdiArea*>()->subWindowList())
        if (frame->isVisible() && className(frame->widget()) == QString::fromLatin1(formClass))
            return frame;
    return nullptr;
}

QString ProgramFixture::modalWindow()
{
    const QWidget* modal = QApplication::activeModalWidget();
    return modal ? className(modal) : QString();
}
