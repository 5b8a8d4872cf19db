#include "TerminationSignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array watched{SIGINT, SIGHUP, SIGTERM};

// A signal handler may do little more than write to a pipe. The event loop reads the other end.
std::array<int, 2> pipeEnds{-1, -1};
/// The previous action of each signal.
std::array<struct sigaction, watched.size()> previous;

extern "C" void tellEventLoop(int number)
{
    // The interrupted code may be about to read errno.
    const int error = errno;
    const char byte = static_cast<char>(number);
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
    errno = error;
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent)
{
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        for (char byte = 0; read(pipeEnds[0], &byte, 1) == 1;)
            emit arrived(byte);
    });
    // A signal that is ignored stays ignored: nohup, for example, wants that.
    struct sigaction told {};
    told.sa_handler = tellEventLoop;
    told.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < watched.size(); ++i) {
        sigaction(watched[i], nullptr, &previous[i]);
        if (previous[i].sa_handler != SIG_IGN)
            sigaction(watched[i], &told, nullptr);
    }
}

TerminationSignals::~TerminationSignals()
{
    if (pipeEnds[0] < 0)
        return;
    for (std::size_t i = 0; i < watched.size(); ++i)
        sigaction(watched[i], &previous[i], nullptr);
    for (int& end : pipeEnds) {
        close(end);
        end = -1;
    }
}
