#include "Wipe.h"

#include <cstring>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

// Neither of the system's two functions is left out by the compiler, as one that writes what nobody
// reads may be.
void overwrite(char* bytes, qsizetype count)
{
#ifdef Q_OS_WIN
    SecureZeroMemory(bytes, static_cast<SIZE_T>(count));
#else
    ::explicit_bzero(bytes, static_cast<std::size_t>(count));
#endif
}

void wipe(QByteArray& secret) { wipeFront(secret, secret.size()); }

void wipeFront(QByteArray& bytes, qsizetype count)
{
    // Moved by hand: QByteArray moves its begin instead, and later all bytes back to the front of
    // its buffer, which leaves a copy behind them.
    char* const begin = bytes.data();
    const qsizetype rest = bytes.size() - count;
    std::memmove(begin, begin + count, static_cast<std::size_t>(rest));
    overwrite(begin + rest, count);
    bytes.truncate(rest);
}
