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
/// A rename survives a power cut only when its folder has been synced too. False when the disk
/// failed. A folder that cannot be opened or synced is no failure.
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
/// Windows cannot sync a folder. Its file system journals renames.
bool syncFolderOf(const QString& /*path*/) { return true; }
#endif

} // namespace

bool WholeFile::open(QFile& file, QIODevice::OpenMode mode)
{
    const QFileInfo named(file.fileName());
    return named.isFile() && file.open(mode);
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
    // A device or a pipe would be lost: a file would take its place.
    const QFileInfo target(path);
    if (target.exists() && !target.isFile())
        return false;
    QSaveFile file(path);
    // Flush explicitly: commit would not notice that the disk is full.
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() &&
           file.commit() && syncFolderOf(path);
}
