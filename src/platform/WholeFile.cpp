#include "WholeFile.h"

#include <QSaveFile>

bool WholeFile::replace(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    // Flushed by hand: a commit takes no note of what only its own flush finds, a full disk.
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() &&
           file.commit();
}
