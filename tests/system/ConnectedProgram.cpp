#include "ConnectedProgram.h"

#include "LogText.h"
#include "MessageLink.h"
#include "SerialPort.h"
#include "frmRexistroEstado.h"

#include <QAction>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>

using namespace Qt::StringLiterals;

ConnectedProgram::ConnectedProgram(const QStringList& simulatorOptions)
    : ConnectedProgram(simulatorOptions, [](const QString& device) { return device; })
{}

ConnectedProgram::ConnectedProgram(const QStringList& simulatorOptions,
                                   const std::function<QString(const QString& device)>& reach)
    : clock(simulatorOptions),
      m_prepared(qputenv("HCT_COM1", reach(clock.device()).toLocal8Bit())),
      program(system.environment(), systemDesktop(dialogs))
{
    program.start();
}

ConnectedProgram::~ConnectedProgram()
{
    dialogs.whileUp = nullptr;
    program.mainWindow().unload();
}

bool ConnectedProgram::connectToClock()
{
    choose("mnuConectar");
    return QTest::qWaitFor([this] { return isEstablished(); }, patience);
}

QString ConnectedProgram::chooseAbsentPort()
{
    // On Windows a port has no other name.
    qputenv("HCT_COM16", "/dev/no-such-port");
    CommSettings& settings = program.session().settings();
    settings.directPort = u"15"_s;
    settings.modemPort = u"15"_s;
    program.session().link().ApplySettings();
    return program.session().link().directPort().deviceName();
}

void ConnectedProgram::choose(const char* name)
{
    auto* entry = program.mainWindow().findChild<QAction*>(QString::fromLatin1(name));
    if (entry && entry->isVisible())
        entry->trigger();
}

QString ConnectedProgram::panel(int number)
{
    auto& window = program.mainWindow();
    return window.findChild<QLabel*>(u"stbBarra(%1)"_s.arg(number))->text();
}

QStringList ConnectedProgram::logLines()
{
    auto& log = program.log();
    QStringList lines = log.findChild<LogText*>()->toPlainText().split(u'\n');
    lines.removeAll(QString());
    for (QString& line : lines)
        line = line.section(u" :: "_s, 1);
    return lines;
}

QWidget* ConnectedProgram::shownForm(const char* className)
{
    auto& window = program.mainWindow();
    for (const QMdiSubWindow* frame : window.findChild<QMdiArea*>()->subWindowList())
        if (frame->isVisible() &&
            qstrcmp(frame->widget()->metaObject()->className(), className) == 0)
            return frame->widget();
    return nullptr;
}

QString ConnectedProgram::text(const char* className, const char* control)
{
    const QWidget* form = shownForm(className);
    const auto* label = form ? form->findChild<QLabel*>(QString::fromLatin1(control)) : nullptr;
    return label ? label->text() : QString();
}
