#pragma once

#include "Registry.h"

#include <QByteArray>
#include <QString>

#include <functional>

/// Small functions that many windows use.
namespace modUtilidades {

/// 1 "lunes" to 7 "domingo"; any other number "-------".
QString dayName(quint8 day);
/// 1 "enero" to 12 "diciembre"; any other number "-------".
QString monthName(quint8 month);
/// For type 11 "HCT7200" or "HCT7300", by byte 12 of `generalData` (see StatusBlock::model). For
/// other types "Desconocido".
QString modelName(qint16 typeCode, const QByteArray& generalData);
/// The full year for a two-digit one: 2000 is added below 90, otherwise 1900.
qint16 fullYear(quint8 year);
/// The last `width` digits of a number in upper-case hexadecimal, padded with "0" on the left.
QString hexadecimalText(qint32 value, int width);
/// The part of a path after its last "\". With `stripExtension`, an extension of 1 to 3 characters
/// is removed before.
QString fileName(const QString& path, bool stripExtension);

/// Starts the system-information program that the registry names; false when there is none, or it
/// did not start. `start` runs a program in a normal window; false when it could not.
bool systemInformation(const Registry& registry,
                       const std::function<bool(const QString& program)>& start);

} // namespace modUtilidades
