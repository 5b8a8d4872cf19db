#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <optional>

class QFile;

namespace WholeFile {

/// Opens a file for reading. False for what is no file too: a pipe or a device could keep the
/// program waiting for its other end, or never end.
bool open(QFile& file, QIODevice::OpenMode mode = QIODevice::ReadOnly);

/// Its bytes, `maximum` at most; nothing when there is no such file that can be read.
std::optional<QByteArray> read(const QString& path, qint64 maximum);

/// Writes the whole file or leaves what was there; false when it could not be written, or when the
/// disk did not confirm that the new file stays. A file in a folder that may not be written is
/// never replaced, even if it may be written itself: written in place, a failure would cut it.
bool replace(const QString& path, const QByteArray& bytes);

} // namespace WholeFile
