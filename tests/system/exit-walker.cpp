// The program, which brings itself into a state and closes there. TestExits starts it.
//   exit-walker STATE WINDOW WAY
// Exit code: 0 ended normally, 2 unknown arguments, 3 a port was left open.

#include "ApplicationEnd.h"
#include "ConnectionWorkflow.h"
#include "MessageLink.h"
#include "Program.h"
#include "SerialPort.h"
#include "SystemEnvironment.h"
#include "WidgetDialogs.h"
#include "frmPrincipal.h"

#include <QAction>
#include <QApplication>
#include <QInputDialog>
#include <QMap>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

class Walk {
public:
    explicit Walk(Program& program) : m_program(program) { describeSteps(); }

    bool begin(const QString& state, const QString& window, const QString& way);

private:
    /// An action, and the condition that tells that it has worked.
    struct Step {
        std::function<void()> act;
        std::function<bool()> reached;
    };

    void describeSteps();
    void describeModemSteps();
    void describeWindows();
    void look();
    void choose(const char* entry);
    void type(const QString& text);
    bool isEstablished() { return m_program.session().globais().LinkEstablished; }
    bool isLink(LinkState state) { return m_program.session().link().state() == state; }
    bool isWorkflow(ConnectionState state)
    {
        return m_program.session().workflow().state() == state;
    }

    Program& m_program;
    QMap<QString, Step> m_states;
    QMap<QString, Step> m_windows;
    QMap<QString, std::function<void()>> m_ways;
    QList<Step> m_steps;
    std::function<void()> m_close;
    QTimer m_timer;
    bool m_acted = false;
};

template<typename Wanted>
Wanted* modal()
{
    return qobject_cast<Wanted*>(QApplication::activeModalWidget());
}

bool isShown(const char* className)
{
    const QWidgetList widgets = QApplication::allWidgets();
    return std::any_of(widgets.begin(), widgets.end(), [className](const QWidget* widget) {
        return widget->isVisible() && qstrcmp(widget->metaObject()->className(), className) == 0;
    });
}

void Walk::describeSteps()
{
    const auto connectDirect = [this] { choose("mnuConectar"); };
    const auto nothing = [] {};
    m_states = {
        {u"idle"_s, {nothing, [] { return true; }}},
        {u"no-port"_s,
         {[this] {
              m_program.session().settings().directPort = u"15"_s;
              m_program.session().link().ApplySettings();
              choose("mnuConectar");
          },
          [this] { return m_program.session().workflow().FailedAttempts() > 0; }}},
        {u"identifying"_s,
         {connectDirect, [this] { return m_program.session().link().Ocupado(); }}},
        {u"half-answer"_s, {connectDirect, [this] { return isLink(LinkState::Body); }}},
        {u"connected"_s, {connectDirect, [this] { return isEstablished(); }}},
        {u"asking"_s,
         {connectDirect,
          [this] { return isEstablished() && m_program.session().link().Ocupado(); }}},
        {u"identifying-again"_s,
         {connectDirect,
          [this] { return isEstablished() && isWorkflow(ConnectionState::Identifying); }}},
        {u"line-lost"_s,
         {connectDirect,
          [this] { return isEstablished() && !m_program.session().link().directPort().isOpen(); }}},
        {u"ended"_s,
         {[this] {
              choose("mnuConectar");
              QObject::connect(&m_program.session().workflow(),
                               &ConnectionWorkflow::clockCommandsUnlocked, &m_program.mainWindow(),
                               [this] { choose("mnuDesconectar"); });
          },
          [this] { return m_program.session().globais().DeviceType != 0 && !isEstablished(); }}},
    };
    describeModemSteps();
    describeWindows();
    m_ways = {
        {u"salir"_s, [this] { choose("mnuSair"); }},
        {u"title-bar"_s, [this] { m_program.mainWindow().close(); }},
        {u"signal"_s, [] { std::raise(SIGTERM); }},
        {u"agreed"_s,
         [this] {
             QTimer::singleShot(0, &m_program.mainWindow(), [] {
                 while (!modal<QMessageBox>())
                     QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
                 modal<QMessageBox>()->button(QMessageBox::Yes)->click();
             });
             choose("mnuSair");
         }},
    };
}

void Walk::describeModemSteps()
{
    const auto dial = [this] {
        choose("mnuUsarModem");
        choose("mnuConectar");
    };
    m_states.insert(u"initialising"_s,
                    {dial, [this] { return isLink(LinkState::Initialisation); }});
    m_states.insert(u"number-asked"_s, {dial, [] { return modal<QInputDialog>() != nullptr; }});
    m_states.insert(u"dialling"_s, {dial, [this] {
                                        type(u"981123456"_s);
                                        return isLink(LinkState::Dialling);
                                    }});
    m_states.insert(u"called"_s, {dial, [this] {
                                      type(u"981123456"_s);
                                      return isEstablished();
                                  }});
}

void Walk::describeWindows()
{
    m_windows.insert(u"none"_s, {[] {}, [] { return true; }});
    const struct {
        const char* name;
        const char* entry;
        const char* className;
    } windows[] = {
        {"log", "mnuRexistro", "frmRexistroEstado"},
        {"settings", "mnuConfiguracion", "frmPortoSerie"},
        {"information", "mnuInformacion", "frmInfoHCT7200"},
        {"synchronisation", "mnuSincronizacionReloxo", "frmSincronizacionReloxo"},
        {"remote-control", "mnuTelemando", "frmTelemandoHCT7200"},
        {"programming", "mnuProgramacion", "frmProgHCT7200"},
        {"firmware", "mnuFirmware", "frmProgramPROM"},
        {"about", "mnuAcerca", "frmAcerca"},
        {"question", "mnuDesconectar", "QMessageBox"},
    };
    for (const auto& window : windows)
        m_windows.insert(QString::fromLatin1(window.name),
                         {[this, window] { choose(window.entry); },
                          [window] { return isShown(window.className); }});
    m_windows.insert(u"all"_s,
                     {[this] {
                          for (const char* entry : {"mnuRexistro", "mnuInformacion", "mnuTelemando",
                                                    "mnuSincronizacionReloxo", "mnuFirmware"})
                              choose(entry);
                      },
                      [] { return isShown("frmProgramPROM"); }});
}

bool Walk::begin(const QString& state, const QString& window, const QString& way)
{
    if (!m_states.contains(state) || !m_windows.contains(window) || !m_ways.contains(way))
        return false;
    m_steps = {m_states[state], m_windows[window]};
    m_close = m_ways[way];
    QObject::connect(&m_timer, &QTimer::timeout, &m_program.mainWindow(), [this] { look(); });
    m_timer.start(1);
    return true;
}

void Walk::look()
{
    if (!m_acted) {
        m_acted = true;
        // As an event of its own: through a modem, or with a box, it returns only when that is
        // over, and a timer does not tick again before its slot has returned.
        QTimer::singleShot(0, &m_program.mainWindow(), m_steps.first().act);
        return;
    }
    if (!m_steps.first().reached())
        return;
    m_steps.removeFirst();
    m_acted = false;
    if (!m_steps.isEmpty())
        return;
    m_timer.stop();
    std::puts("ready");
    std::fflush(stdout);
    m_close();
}

void Walk::choose(const char* entry)
{
    auto* action = m_program.mainWindow().findChild<QAction*>(QString::fromLatin1(entry));
    if (action && action->isVisible())
        action->trigger();
}

void Walk::type(const QString& text)
{
    auto* box = modal<QInputDialog>();
    if (!box || !box->isVisible())
        return;
    box->setTextValue(text);
    box->accept();
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    SystemEnvironment system;
    const Environment environment = system.environment();
    WidgetDialogs dialogs;
    Program program(environment, systemDesktop(dialogs));
    const ApplicationEnd end(application, program.mainWindow());
    program.start();
    Walk walk(program);
    if (!walk.begin(arguments.value(1), arguments.value(2), arguments.value(3)))
        return 2;
    const int code = QCoreApplication::exec();
    const bool leftOpen = environment.commSerie.isOpen() || environment.commModem.isOpen();
    return leftOpen ? 3 : code;
}
