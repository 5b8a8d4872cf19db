#include "EndSignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace simulator {

namespace {

int openDescriptor()
{
    sigset_t asked;
    ::sigemptyset(&asked);
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        ::sigaddset(&asked, number);
    ::pthread_sigmask(SIG_BLOCK, &asked, nullptr);
    return ::signalfd(-1, &asked, SFD_NONBLOCK | SFD_CLOEXEC);
}

} // namespace

EndSignals::EndSignals(QObject* parent) : QObject(parent), m_descriptor(openDescriptor())
{
    auto* const notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        signalfd_siginfo information{};
        if (::read(m_descriptor, &information, sizeof information) > 0)
            emit ended();
    });
}

EndSignals::~EndSignals() { ::close(m_descriptor); }

} // namespace simulator
