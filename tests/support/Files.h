#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

/// A file of exactly these bytes, whatever was there; its path. Without it a test has no sense.
inline QString writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

/// "(unreadable)" where there is no such file.
inline QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}
