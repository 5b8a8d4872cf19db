#pragma once

#include "Registry.h"

#include <QByteArray>
#include <QString>

#include <chrono>

/// Lets one program at a time pass: it holds the system's lock on a lock file for as long as the
/// object lives. The system frees the lock when the program ends, in whatever way. A lock file that
/// was left over is used again. Where the file system cannot lock, or no lock file can be made,
/// every program may pass.
class FileLock final : public Registry::Hold {
public:
    /// Waits until `path` is free, for `patience` at most. Its folder must exist.
    FileLock(const QString& path, std::chrono::milliseconds patience);
    /// Removes the lock file.
    ~FileLock() override;
    Q_DISABLE_COPY_MOVE(FileLock)

    /// False when another program kept the lock.
    bool mayPass() const { return m_mayPass; }

private:
    int open() const;
    bool isTheFileAtThePath(int descriptor) const;

    QByteArray m_path;
    int m_descriptor = -1;
    bool m_mayPass = false;
};
