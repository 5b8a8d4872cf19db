#pragma once

#include <QByteArray>

/// For secrets, which must not stay in memory after their use.

/// Overwrites `count` bytes with 0, also when other objects share them.
void overwrite(char* bytes, qsizetype count);
/// Overwrites and empties. When a copy shares the bytes, they are not overwritten.
void wipe(QByteArray& secret);
/// Removes the first `count` bytes, so that no copy of them or of the rest stays. The rest moves to
/// the front of the buffer.
void wipeFront(QByteArray& bytes, qsizetype count);
