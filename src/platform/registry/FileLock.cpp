#include "FileLock.h"

#include <QDeadlineTimer>
#include <QFile>

#include <cerrno>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace std::chrono_literals;

FileLock::FileLock(const QString& path, std::chrono::milliseconds patience)
    : m_path(QFile::encodeName(path))
{
    const QDeadlineTimer deadline(patience);
    for (;;) {
        const int descriptor = open();
        if (descriptor < 0)
            return;
        const bool locked = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
        if (locked && isTheFileAtThePath(descriptor)) {
            m_descriptor = descriptor;
            return;
        }
        const bool busy = locked || errno == EWOULDBLOCK;
        ::close(descriptor);
        if (!busy || deadline.hasExpired())
            return;
        std::this_thread::sleep_for(1ms);
    }
}

FileLock::~FileLock()
{
    if (!isHeld())
        return;
    // Remove the file before the lock is free: afterwards it may belong to another program.
    ::unlink(m_path.constData());
    ::close(m_descriptor);
}

int FileLock::open() const
{
    // Some network file systems lock only files that are open for writing.
    const int descriptor =
        ::open(m_path.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (descriptor >= 0 || errno != EACCES)
        return descriptor;
    // The file may be one that a killed program of another user left.
    return ::open(m_path.constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
}

/// False when another program removed the file between opening and locking it here.
bool FileLock::isTheFileAtThePath(int descriptor) const
{
    struct stat ours {};
    struct stat current {};
    return ::fstat(descriptor, &ours) == 0 && ::stat(m_path.constData(), &current) == 0 &&
           ours.st_dev == current.st_dev && ours.st_ino == current.st_ino;
}
