#pragma once

#include <QProcess>
#include <QString>

/// How many milliseconds a test waits for a process. Only a failing test waits so long.
inline constexpr int processPatience = 30000;

/// Whether the process ends within so many milliseconds or has ended already. (For a process that
/// has ended, waitForFinished returns false.) False for a process that could not be started.
inline bool hasEnded(QProcess& process, int milliseconds = processPatience)
{
    if (process.state() == QProcess::NotRunning)
        return process.error() != QProcess::FailedToStart;
    return process.waitForFinished(milliseconds);
}

/// The next line of the process's standard output without its end, also after the process has
/// ended; empty when there is none within so many milliseconds.
inline QString readLineOf(QProcess& process, int milliseconds = processPatience)
{
    while (!process.canReadLine() && process.waitForReadyRead(milliseconds)) {
    }
    return process.canReadLine() ? QString::fromUtf8(process.readLine()).trimmed() : QString();
}
