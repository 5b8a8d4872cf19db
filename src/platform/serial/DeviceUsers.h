#pragma once

#include <QString>

/// Whether a process has the device open, with or without a lock file. Nothing is opened for it:
/// the system is asked which files processes have open. It tells that of one's own processes only,
/// and the administrator that of all. The process that has made a pseudo-terminal does not count.
/// `device` is the real path, not a link.
bool isOpenSomewhere(const QString& device);
