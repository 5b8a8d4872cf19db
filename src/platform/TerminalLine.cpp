#include "TerminalLine.h"

#include "TerminationSignals.h"

#include <QEventLoop>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <unistd.h>

TerminalLine readTerminalLine(const TerminationSignals& termination)
{
    TerminalLine line;
    QByteArray typed;
    QEventLoop loop;
    QObject::connect(&termination, &TerminationSignals::arrived, &loop, [&](int number) {
        line.signalNumber = number;
        loop.quit();
    });
    const QSocketNotifier notifier(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &loop, [&] {
        std::array<char, 256> part{};
        const ssize_t size = ::read(STDIN_FILENO, part.data(), part.size());
        if (size < 0 && (errno == EINTR || errno == EAGAIN))
            return;
        typed.append(part.data(), qMax<ssize_t>(size, 0));
        line.isComplete = typed.endsWith('\n');
        if (size <= 0 || line.isComplete)
            loop.quit();
    });
    loop.exec();
    line.text = QString::fromUtf8(typed.trimmed());
    return line;
}
