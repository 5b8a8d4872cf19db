#pragma once

#include <QByteArray>

/// For secrets, which must not stay in memory that is used no more.

/// Overwrites so many bytes with 0, whoever else uses them.
void overwrite(char* bytes, qsizetype count);
/// Overwrites and empties. A copy that shares the bytes keeps them.
void wipe(QByteArray& secret);
/// Overwrites the first bytes before it removes them.
void wipeFront(QByteArray& bytes, qsizetype count);
