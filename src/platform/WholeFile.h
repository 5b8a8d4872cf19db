#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <optional>

class QFile;

/// Files that are read with a bound, and replaced whole or not at all.
namespace WholeFile {

/// Opens a regular file for reading; false when it cannot. Pipes and devices are refused: they
/// could block the program or never end.
bool open(QFile& file, QIODevice::OpenMode mode = QIODevice::ReadOnly);

/// The first `maximum` bytes of a file; nothing when there is no regular file that can be read.
std::optional<QByteArray> read(const QString& path, qint64 maximum);

/// Replaces the file whole, or leaves the old one. False when it could not be written, or when the
/// disk did not confirm the new file. Needs the right to write to the folder: a file written in
/// place would be cut by a failure.
bool replace(const QString& path, const QByteArray& bytes);

} // namespace WholeFile
