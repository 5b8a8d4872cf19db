// The whole program off screen with the simulated clock: polls a second, their CPU time and their
// wake-ups, through the modem too; CPU time without a connection; and the time to start.

#include "Figures.h"
#include "FirstWindow.h"
#include "RunningProgram.h"
#include "Spanish.h"

#include <QAction>
#include <QApplication>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTranslator>

#include <chrono>

using namespace Qt::StringLiterals;

namespace {

/// A request of 9 bytes and an answer of 228, of 10 bits each.
constexpr double bitsOfAPoll = 2370;
constexpr int secondsToSettle = 1;

void letEventsRun(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// What has been used until an answer arrived.
struct Sample {
    int answers = 0;
    double seconds = 0;
    double cpuSeconds = 0;
    qint64 wakeUps = 0;
};

Sample atNextAnswer(const Running& running)
{
    const int before = running.answers;
    waitFor([&] { return running.answers > before; });
    const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
    return {running.answers, now.count(), figures::cpuSeconds(), figures::wakeUps()};
}

int measurePolls(const QString& simulator, int rate, int seconds, bool withWindow)
{
    const Clock clock(simulator, rate);
    Running running;
    if (!running.connectAt(rate)) {
        std::fprintf(stderr, "no connection with the simulated clock\n");
        return 1;
    }
    if (withWindow)
        running.program.mainWindow().findChild<QAction*>(u"mnuInformacion"_s)->trigger();
    letEventsRun(secondsToSettle * 1000);
    const Sample first = atNextAnswer(running);
    letEventsRun(seconds * 1000);
    const Sample last = atNextAnswer(running);

    const double polls = last.answers - first.answers;
    const double elapsed = last.seconds - first.seconds;
    const double cpu = last.cpuSeconds - first.cpuSeconds;
    // Time on the wire, the pause of 4 ms, and 10 ticks, the first of which comes after half of one
    // when the line is paced.
    const double best = rate > 0 ? 1 / (bitsOfAPoll / rate + 0.004 + 0.0095) : 1 / 0.014;
    std::printf("%s%s\n", rate > 0 ? qPrintable(u"At %1 bit/s"_s.arg(rate)) : "Unpaced",
                withWindow ? ", with the information window" : "");
    figures::print("  polls a second", polls / elapsed, best, "/s");
    if (rate == 0)
        figures::print("  CPU a poll", cpu / polls * 1000, 0.5, "ms");
    else
        figures::print("  CPU a poll", cpu / polls * 1000, "ms");
    if (rate == 9600)
        figures::print("  CPU", cpu / elapsed * 100, 0.5, "% core");
    else
        figures::print("  CPU", cpu / elapsed * 100, "% core");
    figures::print("  wake-ups a poll", static_cast<double>(last.wakeUps - first.wakeUps) / polls,
                   withWindow ? 25 : 10, "");
    return running.program.session().workflow().state() == ConnectionState::Connected ? 0 : 1;
}

/// What it costs on this machine to be woken each millisecond and to do nothing.
int measureBareTimer(int seconds)
{
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(1);
    const qint64 wakeUps = figures::wakeUps();
    const double cpu = figures::cpuSeconds();
    letEventsRun(seconds * 1000);
    std::printf("A bare timer of 1 ms, %d s\n", seconds);
    figures::print("  CPU", (figures::cpuSeconds() - cpu) / seconds * 100, "% core");
    figures::print("  wake-ups a second",
                   static_cast<double>(figures::wakeUps() - wakeUps) / seconds, "");
    return 0;
}

/// Gives any number to call.
class Caller final : public Dialogs {
public:
    void tell(Icon, const QString&, const QString&) override {}
    bool confirm(Icon, const QString&, const QString&) override { return true; }
    std::optional<QString> askText(const QString&, const QString&) override { return u"1"_s; }
    QString openFile(const FileRequest&) override { return {}; }
    QString saveFile(const FileRequest&) override { return {}; }
};

/// A call through the simulated modem: dialling, which takes some seconds, and polls through it.
int measureModem(const QString& simulator, int seconds)
{
    const QString delay = QString::number(seconds * 1000);
    const Clock clock(simulator, {u"--modem"_s, u"--dial-delay"_s, delay});
    Caller caller;
    Running running(caller);
    running.program.session().link().ApplySettings();
    qint64 wakeUps = figures::wakeUps();
    running.program.session().workflow().Conectar(true);
    std::printf("Through the modem\n");
    figures::print("  wake-ups a second of dialling",
                   static_cast<double>(figures::wakeUps() - wakeUps) / seconds, 10, "");
    if (!waitFor([&] { return running.program.session().workflow().Established(); }))
        return 1;
    const Sample first = atNextAnswer(running);
    letEventsRun(seconds * 1000);
    const Sample last = atNextAnswer(running);
    figures::print(
        "  wake-ups a poll",
        static_cast<double>(last.wakeUps - first.wakeUps) / (last.answers - first.answers), 10, "");
    running.program.session().workflow().Desconectar();

    letEventsRun(secondsToSettle * 1000);
    running.program.session().link().OpenModemPort();
    wakeUps = figures::wakeUps();
    letEventsRun(seconds * 1000);
    // The end of the measurement is a wake-up too.
    figures::print("  wake-ups with the modem open and idle",
                   static_cast<double>(figures::wakeUps() - wakeUps - 1), "(limit 0)");
    running.program.session().link().RemataConexion();
    return 0;
}

void measureIdleness(const char* when, int seconds)
{
    letEventsRun(secondsToSettle * 1000);
    const qint64 wakeUps = figures::wakeUps();
    const double cpu = figures::cpuSeconds();
    letEventsRun(seconds * 1000);
    std::printf("%s, %d s\n", when, seconds);
    figures::print("  CPU", (figures::cpuSeconds() - cpu) / seconds * 100, "% core (limit 0)");
    // The end of the measurement is a wake-up too.
    figures::print("  wake-ups", static_cast<double>(figures::wakeUps() - wakeUps - 1),
                   "(limit 0)");
}

int measureIdle(const QString& simulator, int seconds)
{
    const Clock clock(simulator, 0);
    Running running;
    measureIdleness("Not connected", seconds);
    if (!running.connectAt(0))
        return 1;
    running.program.session().workflow().Desconectar();
    measureIdleness("After a connection", seconds);
    return 0;
}

int showFirstWindow()
{
    QTranslator toolkit;
    speakSpanish(toolkit);
    SystemEnvironment system;
    WidgetDialogs dialogs;
    Program program(system.environment(), systemDesktop(dialogs));
    const FirstWindow first(program.mainWindow(), figures::printFirstWindow);
    program.start();
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    // A user's settings are neither read nor written.
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString what = arguments.value(1);
    const QString simulator = arguments.value(2);
    if (what == u"polls"_s)
        return measurePolls(simulator, arguments.value(3).toInt(), arguments.value(4).toInt(),
                            arguments.contains(u"window"_s));
    if (what == u"idle"_s)
        return measureIdle(simulator, arguments.value(3).toInt());
    if (what == u"modem"_s)
        return measureModem(simulator, arguments.value(3).toInt());
    if (what == u"bare-timer"_s)
        return measureBareTimer(arguments.value(2).toInt());
    if (what == u"first-window"_s)
        return showFirstWindow();
    std::fprintf(stderr, "usage: bench-exchange polls SIMULATOR RATE SECONDS [window]\n"
                         "       bench-exchange idle SIMULATOR SECONDS\n"
                         "       bench-exchange modem SIMULATOR SECONDS\n"
                         "       bench-exchange bare-timer SECONDS\n"
                         "       bench-exchange first-window\n"
                         "RATE 0 is a line that takes no time.\n");
    return 2;
}
