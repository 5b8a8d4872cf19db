#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

/// Writes a file with exactly these bytes; its path. Ends the test program when it cannot.
inline QString writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

/// The file's bytes; "(unreadable)" if there is no such file.
inline QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}
