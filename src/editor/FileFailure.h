#pragma once

#include <QString>

/// Why a file could not be read or written, as far as can be found out afterwards: one sentence for
/// the operator, in Spanish.
namespace FileFailure {

QString ofReading(const QString& path);
QString ofWriting(const QString& path);

} // namespace FileFailure
