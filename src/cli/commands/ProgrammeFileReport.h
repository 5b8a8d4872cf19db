#pragma once

#include "ExitStatus.h"

#include <QString>

class Console;

/// What the commands for files of programmes tell. `model` is "7200" or "7300"; when it is empty,
/// the likely one is taken and told.
namespace programmefilereport {

/// Everything that is wrong in the file. Done when it can be sent.
ExitStatus check(const QString& path, const QString& model, Console& console);
/// The programme in the file.
ExitStatus show(const QString& path, const QString& model, Console& console);
/// In what the programmes of two files differ. Done when they are equal, Refused when not.
ExitStatus compare(const QString& path, const QString& otherPath, const QString& model,
                   Console& console);

} // namespace programmefilereport
