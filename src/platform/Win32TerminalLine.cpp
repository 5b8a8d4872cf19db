#include "TerminalLine.h"

#include "TerminationSignals.h"

#include <QEventLoop>

#include <array>

#include <windows.h>

TerminalLine readTerminalLine(const TerminationSignals& termination)
{
    TerminalLine line;
    QEventLoop loop;
    QObject::connect(&termination, &TerminationSignals::arrived, &loop, [&](int number) {
        line.signalNumber = number;
        loop.quit();
    });
    std::array<wchar_t, 256> typed{};
    DWORD size = 0;
    SetLastError(ERROR_SUCCESS);
    ReadConsoleW(GetStdHandle(STD_INPUT_HANDLE), typed.data(), static_cast<DWORD>(typed.size()),
                 &size, nullptr);
    const bool isAborted = size == 0 && GetLastError() == ERROR_OPERATION_ABORTED;
    line.text = QString::fromWCharArray(typed.data(), static_cast<qsizetype>(size));
    line.isComplete = line.text.endsWith(u'\n');
    line.text = line.text.trimmed();
    // After Ctrl+C the signal is on its way, from a thread of the system.
    if (isAborted)
        loop.exec();
    else
        loop.processEvents();
    return line;
}
