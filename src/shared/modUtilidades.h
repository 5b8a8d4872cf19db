#pragma once

#include "Dialogs.h"
#include "Registry.h"

#include <QByteArray>
#include <QString>

#include <functional>

/// Small routines that many windows use.
namespace modUtilidades {

/// 1 "lunes" to 7 "domingo"; any other number "-------".
QString dayName(quint8 day);
/// 1 "enero" to 12 "diciembre"; any other number "-------".
QString monthName(quint8 month);
/// "HCT7200" or "HCT7300" by byte 12 of `generalData` when the type is 11 (30, or no such byte, is
/// the HCT-7200), else "Desconocido".
QString modelName(qint16 typeCode, const QByteArray& generalData);
/// A two-digit year: below 90 it is 20yy, from 90 on 1900 is added.
qint16 fullYear(quint8 year);
/// Upper-case hexadecimal, the last `width` digits, padded with "0" on the left.
QString hexadecimalText(qint32 value, int width);
/// What stands after the last "\". With `stripExtension` an extension of 3, 2 or 1 characters is
/// dropped first.
QString fileName(const QString& path, bool stripExtension);

/// Starts the system-information program that the registry names; tells the operator when there is
/// none. `start` runs a program in a normal window and says whether it could.
void systemInformation(const Registry& registry, Dialogs& dialogs,
                       const std::function<bool(const QString& program)>& start);

} // namespace modUtilidades
