#include "ExitStates.h"
#include "Processes.h"
#include "SettingsOfItsOwn.h"
#include "SimulatorProcess.h"

#include <QTest>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

#ifdef Q_OS_UNIX
void separate(QProcess& program)
{
    program.setChildProcessModifier([] {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
    });
}

bool isGroupEmpty(qint64 leader)
{
    return kill(static_cast<pid_t>(-leader), 0) == -1 && errno == ESRCH;
}
#else
// Windows has no process groups.
void separate(QProcess&) {}

bool isGroupEmpty(qint64) { return true; }
#endif

void addWalk(const QStringList& simulator, const char* state, const char* window, const char* way)
{
#ifdef Q_OS_WIN
    if (qstrcmp(way, "signal") == 0)
        return;
#endif
    QTest::addRow("%s, %s, %s", state, window, way)
        << simulator
        << QStringList{QString::fromLatin1(state), QString::fromLatin1(window),
                       QString::fromLatin1(way)};
}

} // namespace

/// The program is closed in every state of link and connection, with each window open. It must end
/// normally and leave no process and no open port. bench/run measures how long the end takes.
class TestExits : public QObject {
    Q_OBJECT
private slots:
    void programEndsFromEveryState_data();
    void programEndsFromEveryState();
    void programEndsWithEachWindowOpen_data();
    void programEndsWithEachWindowOpen();

private:
    static void walk(const QStringList& simulator, const QStringList& arguments);
};

void TestExits::programEndsFromEveryState_data()
{
    QTest::addColumn<QStringList>("simulator");
    QTest::addColumn<QStringList>("arguments");
    for (const ExitState& state : exitStates())
        for (const char* way : {"salir", "title-bar", "signal"})
            addWalk(state.simulator, state.name, "none", way);
}

void TestExits::programEndsFromEveryState()
{
    QFETCH(QStringList, simulator);
    QFETCH(QStringList, arguments);
    walk(simulator, arguments);
}

void TestExits::programEndsWithEachWindowOpen_data()
{
    QTest::addColumn<QStringList>("simulator");
    QTest::addColumn<QStringList>("arguments");
    for (const char* window : exitWindows)
        for (const char* way : {"salir", "signal"})
            addWalk({}, "connected", window, way);
    for (const char* way : {"salir", "signal"})
        addWalk({}, "idle", "settings", way);
    const QStringList manual{u"--command"_s, u"mode manual"_s};
    addWalk(manual, "connected", "none", "agreed");
    addWalk(manual, "connected", "question", "signal");
}

void TestExits::programEndsWithEachWindowOpen()
{
    QFETCH(QStringList, simulator);
    QFETCH(QStringList, arguments);
    walk(simulator, arguments);
}

void TestExits::walk(const QStringList& simulator, const QStringList& arguments)
{
    const SimulatorProcess clock(simulator);
    const SettingsOfItsOwn settings;
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HCT_COM1"_s, clock.device());
    environment.insert(u"HCT_COM16"_s, u"/dev/no-such-port"_s);
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    separate(program);
    program.start(QStringLiteral(HCT_EXIT_WALKER), arguments);
    const qint64 leader = program.processId();
    const QString arrival = readLineOf(program);
    const bool ended = hasEnded(program);
    if (!ended)
        program.kill();
    QCOMPARE(arrival, u"ready"_s);
    QVERIFY2(ended, "the program did not end");
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    QVERIFY2(isGroupEmpty(leader), "a process is left");
}

QTEST_GUILESS_MAIN(TestExits)
#include "TestExits.moc"
