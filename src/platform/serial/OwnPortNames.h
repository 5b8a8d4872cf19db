#pragma once

#include "Registry.h"

#include <QString>

/// The user's own names for COM numbers: the values "COM1" to "COM16" of
/// HKEY_CURRENT_USER\Software\Quorvex\Lurimat\Puertos, texts such as "rfc2217://192.168.1.20:4001".
namespace OwnPortNames {

/// Without blanks around it; empty when there is none.
QString device(const Registry& registry, int number);
/// These two are false when the registry cannot be written, or lacks a letter of the device.
bool set(Registry& registry, int number, const QString& device);
bool unset(Registry& registry, int number);

} // namespace OwnPortNames
