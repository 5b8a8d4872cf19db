#pragma once

#include <QByteArray>
#include <QString>

namespace WholeFile {

/// Writes the whole file or leaves what was there; false when it could not be written.
bool replace(const QString& path, const QByteArray& bytes);

} // namespace WholeFile
