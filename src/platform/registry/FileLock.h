#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>

/// Lets one program at a time pass: it holds the system's lock on a lock file for as long as the
/// object lives. The system frees the lock when the program ends, in whatever way. A lock file that
/// was left over is used again.
class FileLock {
public:
    /// Waits until `path` is free, for `patience` at most. Its folder must exist.
    FileLock(const QString& path, std::chrono::milliseconds patience);
    /// Removes the lock file.
    ~FileLock();
    Q_DISABLE_COPY_MOVE(FileLock)

    /// False when another program kept the lock, or the lock file cannot be made or locked.
    bool isHeld() const { return m_descriptor >= 0; }

private:
    int open() const;
    bool isTheFileAtThePath(int descriptor) const;

    QByteArray m_path;
    int m_descriptor = -1;
};
