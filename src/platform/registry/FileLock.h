#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>

/// One program at a time: held by whoever has the system's lock on a file of its own, for as long
/// as the object lives. The system frees the lock of a program that ends, however it ends; a lock
/// file that it left is taken over.
class FileLock {
public:
    /// Waits until `path` is free, `patience` at most. Its folder must be there.
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
