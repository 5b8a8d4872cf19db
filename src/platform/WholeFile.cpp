#include "WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

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
           file.commit();
}
