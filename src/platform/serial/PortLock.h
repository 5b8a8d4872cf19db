#pragma once

#include <QString>

/// Whether a lock file of a running program marks the device as in use. `device` as below.
bool isLocked(const QString& device);

/// The path of a lock file that marks the device as in use although its process no longer exists;
/// empty when there is none. It belongs to another user, and only that user or the administrator
/// may remove it. `device` is the real path, not a link, for example "/dev/ttyUSB0".
QString abandonedLockFile(const QString& device);
