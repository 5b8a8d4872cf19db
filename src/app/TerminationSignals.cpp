#include "TerminationSignals.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array watched{SIGINT, SIGHUP, SIGTERM};

// A signal handler may only write to a pipe; its other end is read in the event loop.
std::array<int, 2> pipeEnds{-1, -1};

void tellEventLoop(int)
{
    const char byte = 1;
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent)
{
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        if (read(pipeEnds[0], &byte, 1) == 1)
            emit arrived();
    });
    // Who started the program may want it deaf to some, as nohup does.
    for (const int number : watched)
        if (std::signal(number, tellEventLoop) == SIG_IGN)
            std::signal(number, SIG_IGN);
}

TerminationSignals::~TerminationSignals()
{
    for (const int number : watched)
        std::signal(number, SIG_DFL);
    for (int& end : pipeEnds) {
        if (end >= 0)
            close(end);
        end = -1;
    }
}

#else

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent) {}
TerminationSignals::~TerminationSignals() = default;

#endif
