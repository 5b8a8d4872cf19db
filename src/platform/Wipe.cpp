#include "Wipe.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cstring>
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
    overwrite(bytes.data(), count);
    bytes.remove(0, count);
}
