// The time from the closing of the program to the end of its process, in every state of link and
// connection and with each window open:
//   bench-exits SIMULATOR

#include "ExitStates.h"
#include "Figures.h"
#include "Processes.h"
#include "RunningProgram.h"
#include "SettingsOfItsOwn.h"

#include <QElapsedTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int walks = 3;
constexpr double limit = 1000;

/// In milliseconds; -1 when the state was not reached or the program did not end.
double timeToEnd(const QString& simulator, const ExitState& state, const char* window,
                 const char* way)
{
    const Clock clock(simulator, state.simulator);
    const SettingsOfItsOwn settings;
    qputenv("HCT_COM16", "/dev/no-such-port");
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(
        QStringLiteral(EXIT_WALKER),
        {QString::fromLatin1(state.name), QString::fromLatin1(window), QString::fromLatin1(way)});
    if (readLineOf(program) != u"ready"_s)
        return -1;
    QElapsedTimer sinceClosing;
    sinceClosing.start();
    return hasEnded(program) ? static_cast<double>(sinceClosing.nsecsElapsed()) / 1e6 : -1;
}

/// Prints the longest end.
void measure(const QString& simulator, const ExitState& state, const char* window,
             std::initializer_list<const char*> ways)
{
    double longest = 0;
    for (const char* way : ways)
        for (int walk = 0; walk < walks; ++walk) {
            const double time = timeToEnd(simulator, state, window, way);
            if (time < 0) {
                std::printf("  %s, window: %s, way: %s: no end\n", state.name, window, way);
                return;
            }
            longest = std::max(longest, time);
        }
    const QByteArray what = QByteArray("  ") + state.name + ", window: " + window;
    figures::print(what.constData(), longest, limit, "ms");
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QString simulator = QCoreApplication::arguments().value(1);
    for (const ExitState& state : exitStates())
        measure(simulator, state, "none", {"salir", "title-bar", "signal"});
    for (const char* window : exitWindows)
        measure(simulator, {"connected", {}}, window, {"salir", "signal"});
    measure(simulator, {"idle", {}}, "settings", {"salir", "signal"});
}
