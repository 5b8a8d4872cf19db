#include "Wipe.h"

void overwrite(char* bytes, qsizetype count)
{
    // Through a volatile pointer, or the compiler leaves out what nobody reads afterwards.
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
