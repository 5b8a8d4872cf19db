// Firmware lines a second to the simulated clock, in the whole program: polling continues, and the
// firmware window shows every line.

#include "Figures.h"
#include "HexImages.h"
#include "OneFile.h"
#include "RunningProgram.h"

#include <QAction>
#include <QApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>

#include <chrono>

using namespace Qt::StringLiterals;

namespace {

/// A line of 16 bytes and its answer, and a poll and its answer, of 10 bits each.
constexpr double bitsOfALine = (33 + 10) * 10;
constexpr double bitsOfAPoll = (9 + 228) * 10;
constexpr int linesBetweenPolls = 10;

/// What line, pauses of 4 ms and ticks allow: the tick comes after half of one when the line is
/// paced, after a whole one when the answer is there at once.
double bestLinesPerSecond(int rate)
{
    const auto exchange = [rate](double bits) {
        return rate > 0 ? bits / rate + 0.004 + 0.0005 : 0.004 + 0.001;
    };
    return linesBetweenPolls / (linesBetweenPolls * exchange(bitsOfALine) + exchange(bitsOfAPoll));
}

double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

int measureTransfer(const QString& simulator, int rate, int lines)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"image.hex"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(hexImage(lines, 16)) < 0)
        return 1;
    file.close();

    const Clock clock(simulator, rate);
    OneFile dialogs(file.fileName());
    Running running(dialogs);
    if (!running.connectAt(rate)) {
        std::fprintf(stderr, "no connection with the simulated clock\n");
        return 1;
    }
    auto& window = running.program.mainWindow();
    window.findChild<QAction*>(u"mnuFirmware"_s)->trigger();
    window.findChild<QPushButton*>(u"cmdAbrir"_s)->click();
    const auto* notes = window.findChild<QPlainTextEdit*>(u"txtNotas"_s);
    auto* cmdEnviar = window.findChild<QPushButton*>(u"cmdEnviar"_s);
    const double cpuBefore = figures::cpuSeconds();
    const qint64 wakeUpsBefore = figures::wakeUps();
    const double begin = now();
    cmdEnviar->click();
    constexpr int fiveMinutes = 300'000;
    const bool ended = waitFor([&] { return cmdEnviar->isEnabled(); }, fiveMinutes);
    const double elapsed = now() - begin;
    if (!ended || !notes->toPlainText().endsWith(u"Envío finalizado\n"_s)) {
        std::fprintf(stderr, "the transfer did not end well\n");
        return 1;
    }
    std::printf("%s, %d lines of 16 bytes\n",
                rate > 0 ? qPrintable(u"At %1 bit/s"_s.arg(rate)) : "Unpaced", lines);
    figures::print("  lines a second", lines / elapsed, bestLinesPerSecond(rate), "/s");
    figures::print("  CPU a line", (figures::cpuSeconds() - cpuBefore) / lines * 1000, "ms");
    figures::print("  wake-ups a line",
                   static_cast<double>(figures::wakeUps() - wakeUpsBefore) / lines, 10, "");
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    // A user's settings are neither read nor written.
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 4)
        return measureTransfer(arguments[1], arguments[2].toInt(), arguments[3].toInt());
    std::fprintf(stderr, "usage: bench-transfer SIMULATOR RATE LINES\n"
                         "RATE 0 is a line that takes no time.\n");
    return 2;
}
