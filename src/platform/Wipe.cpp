#include "Wipe.h"

void overwrite(char* bytes, qsizetype count)
{
    // The volatile pointer keeps the compiler from omitting writes that nobody reads.
    volatile char* const overwritten = bytes;
    for (qsizetype i = 0; i < count; ++i)
        overwritten[i] = '\0';
}

void wipe(QByteArray& secret) { wipeFront(secret, secret.size()); }

void wipeFront(QByteArray& bytes, qsizetype count)
{
    overwrite(bytes.data(), count);
    bytes.remove(0, count);
}
