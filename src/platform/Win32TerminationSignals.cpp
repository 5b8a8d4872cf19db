#include "TerminationSignals.h"

#include <QMutex>

#include <csignal>

#include <windows.h>

namespace {

/// The object that is told, and its lock: the system calls the handler in a thread of its own.
TerminationSignals* told = nullptr;
QBasicMutex toldLock;

BOOL WINAPI tellEventLoop(DWORD event)
{
    const bool isKey = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
    const int number = isKey ? SIGINT : SIGTERM;
    {
        const QMutexLocker lock(&toldLock);
        if (!told)
            return FALSE;
        QMetaObject::invokeMethod(
            told, [receiver = told, number] { emit receiver->arrived(number); },
            Qt::QueuedConnection);
    }
    // Windows ends the program when this returns, except after a key. It waits some seconds.
    if (!isKey)
        Sleep(INFINITE);
    return TRUE;
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent)
{
    const QMutexLocker lock(&toldLock);
    told = this;
    // It stays: taking it away would wait for a handler that waits for the end of the program.
    static const BOOL isWatched = SetConsoleCtrlHandler(tellEventLoop, TRUE);
    Q_UNUSED(isWatched)
}

TerminationSignals::~TerminationSignals()
{
    const QMutexLocker lock(&toldLock);
    told = nullptr;
}
