// The whole program off screen with the simulated clock, directly and behind ser2net: polls a
// second and their CPU time.

#include "Figures.h"
#include "RunningProgram.h"
#include "Ser2net.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

/// Polls the clock at the device or address.
bool measure(const char* what, const QString& device, int seconds)
{
    qputenv("HCT_COM1", device.toLocal8Bit());
    Running running;
    if (!running.connectAt(0))
        return false;
    const int before = running.answers;
    const double cpu = figures::cpuSeconds();
    QElapsedTimer elapsed;
    elapsed.start();
    waitFor([] { return false; }, seconds * 1000);
    const int polls = running.answers - before;
    std::printf("%s\n", what);
    figures::print("  polls a second", polls * 1000.0 / static_cast<double>(elapsed.elapsed()),
                   "/s");
    figures::print("  CPU a poll", (figures::cpuSeconds() - cpu) / polls * 1000, "ms");
    running.program.session().workflow().Desconectar();
    return polls > 0;
}

} // namespace

int main(int argc, char* argv[])
{
    // A user's settings are neither read nor written.
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        std::fprintf(stderr, "usage: bench-network SIMULATOR RELAY SECONDS\n");
        return 2;
    }
    const Clock clock(arguments.at(1), 0);
    const QString device = qEnvironmentVariable("HCT_COM1");
    const int seconds = arguments.at(3).toInt();
    bool isMeasured = measure("Directly", device, seconds);
    {
        const Ser2net raw(device, Ser2net::Protocol::Raw);
        isMeasured = measure("Through ser2net, raw", raw.address(), seconds) && isMeasured;
    }
    const Ser2net server(device, Ser2net::Protocol::Rfc2217);
    isMeasured = measure("Through ser2net, RFC 2217", server.address(), seconds) && isMeasured;
    const SlowNetwork network(arguments.at(2), server, 300);
    isMeasured =
        measure("... and 300 ms of delay each way", network.address(), seconds) && isMeasured;
    return isMeasured ? 0 : 1;
}
