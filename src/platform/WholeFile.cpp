#include "WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#ifdef Q_OS_UNIX
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

#ifdef Q_OS_UNIX
/// A rename outlives a power cut once its folder is on the disk too. False when the disk failed;
/// folders that cannot be opened, or synced in their file system, are left to the system.
bool syncFolderOf(const QString& path)
{
    const QString folder = QFileInfo(QFileInfo(path).canonicalFilePath()).path();
    const int descriptor =
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return true;
    const bool failed = ::fsync(descriptor) != 0 && errno == EIO;
    ::close(descriptor);
    return !failed;
}
#else
/// Windows syncs no folders; its file system logs a rename whole.
bool syncFolderOf(const QString& /*path*/) { return true; }
#endif

} // namespace

bool WholeFile::open(QFile& file, QIODevice::OpenMode mode)
{
    return QFileInfo(file.fileName()).isFile() && file.open(mode);
}

std::optional<QByteArray> WholeFile::read(const QString& path, qint64 maximum)
{
    QFile file(path);
    if (!open(file))
        return std::nullopt;
    const QByteArray bytes = file.read(maximum);
    return file.error() == QFile::NoError ? std::optional(bytes) : std::nullopt;
}

bool WholeFile::replace(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    // Flushed by hand: a commit takes no note of what only its own flush finds, a full disk.
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() &&
           file.commit() && syncFolderOf(path);
}
