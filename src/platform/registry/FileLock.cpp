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
        const bool locked = descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
        const bool tellsOfNobody = descriptor < 0 || (errno != EWOULDBLOCK && errno != EINTR);
        m_mayPass = locked ? isTheFileAtThePath(descriptor) : tellsOfNobody;
        if (m_mayPass) {
            m_descriptor = descriptor;
            return;
        }
        ::close(descriptor);
        if (deadline.hasExpired())
            return;
        std::this_thread::sleep_for(1ms);
    }
}

FileLock::~FileLock()
{
    if (m_descriptor < 0)
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
    // A failure leaves zeros, which no file has.
    ::fstat(descriptor, &ours);
    return ::stat(m_path.constData(), &current) == 0 && ours.st_dev == current.st_dev &&
           ours.st_ino == current.st_ino;
}
