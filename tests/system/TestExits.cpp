#include "SettingsOfItsOwn.h"
#include "SimulatorProcess.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include <algorithm>
#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

/// Milliseconds; only a fault takes them all.
constexpr int patience = 30000;
constexpr int longestEnd = 1000;
/// Of so many walks one must end in time: the machine may have had other things to do.
constexpr int walks = 4;

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
// There a program is a process and nothing more.
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

/// The program closed in every state of link and connection, with each window open: it ends within
/// a second, in order, and leaves no process and no open port.
class TestExits : public QObject {
    Q_OBJECT
private slots:
    void programEndsFromEveryState_data();
    void programEndsFromEveryState();
    void programEndsWithEachWindowOpen_data();
    void programEndsWithEachWindowOpen();

private:
    void walk(const QStringList& simulator, const QStringList& arguments);
    /// Milliseconds from the closing to the end of the process.
    qint64 timeToEnd(const QStringList& simulator, const QStringList& arguments);
};

void TestExits::programEndsFromEveryState_data()
{
    QTest::addColumn<QStringList>("simulator");
    QTest::addColumn<QStringList>("arguments");
    const struct {
        const char* state;
        QStringList simulator;
    } states[] = {
        {"idle", {}},
        {"no-port", {}},
        {"identifying", {u"--fault"_s, u"silent always on identification"_s}},
        {"half-answer", {u"--fault"_s, u"truncate 6 always on identification"_s}},
        {"connected", {}},
        {"asking", {u"--fault"_s, u"late 5000 after 3 on general"_s}},
        {"identifying-again",
         {u"--fault"_s, u"echo always after 3 on general"_s, u"--fault"_s,
          u"silent always after 1 on identification"_s}},
        {"line-lost", {u"--fault"_s, u"vanish after 3 on general"_s}},
        {"ended", {}},
        {"initialising", {u"--modem"_s, u"--modem-silent"_s}},
        {"number-asked", {u"--modem"_s}},
        {"dialling", {u"--modem"_s, u"--dial-delay"_s, u"60000"_s}},
        {"called", {u"--modem"_s, u"--dial-delay"_s, u"10"_s}},
    };
    for (const auto& row : states)
        for (const char* way : {"salir", "title-bar", "signal"})
            addWalk(row.simulator, row.state, "none", way);
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
    for (const char* window : {"log", "information", "synchronisation", "remote-control",
                               "programming", "firmware", "about", "all"})
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
    qint64 best = patience;
    for (int attempt = 0; attempt < walks && best > longestEnd; ++attempt) {
        best = std::min(best, timeToEnd(simulator, arguments));
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY2(best <= longestEnd, qPrintable(u"ended after %1 ms"_s.arg(best)));
}

qint64 TestExits::timeToEnd(const QStringList& simulator, const QStringList& arguments)
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
    while (!program.canReadLine() && program.waitForReadyRead(patience)) {
    }
    QElapsedTimer sinceClosing;
    sinceClosing.start();
    const bool arrived = program.readLine().trimmed() == "ready";
    const bool ended = program.waitForFinished(patience);
    const qint64 time = sinceClosing.elapsed();
    if (!ended)
        program.kill();
    [&] {
        QVERIFY2(arrived, "the walk did not get there");
        QVERIFY2(ended, "the program did not end");
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QVERIFY2(isGroupEmpty(leader), "a process is left");
    }();
    return time;
}

QTEST_GUILESS_MAIN(TestExits)
#include "TestExits.moc"
