#pragma once

#include <QString>

/// The lock file by which a device counts as in use although the process that it names is gone:
/// another user's, which only that user or the administrator may remove. Empty when there is none.
/// `device` is its true name, for example "/dev/ttyUSB0".
QString abandonedLockFile(const QString& device);
