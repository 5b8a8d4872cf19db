#pragma once

#include "Registry.h"

#include <QString>

/// Reads and writes values of the registry as texts. In the registry they are in the system's ANSI
/// code page (Windows-1252 outside Windows).
namespace modRexistro {

/// Reads a value into `text`. False, and an empty text, when key or value cannot be read.
///
/// REG_SZ gives its text: without `trim` only a NUL at the end is removed, with `trim` the text
/// ends at the first NUL. Any other type but REG_DWORD gives an empty text and true.
///
/// REG_DWORD gives a decimal number. Its bytes, from last to first, are written in hexadecimal
/// without leading zeros and joined, and the result is read as one hexadecimal number. So 05 01 00
/// 00 gives 21 (0x15) and not 261 (0x105). This is intentional.
bool readValue(const Registry& registry, Registry::RootKey root, const QString& subKey,
               const QString& name, QString& text, bool trim);

/// The same for a key that the user may only read, such as the system's own.
bool readReadOnlyValue(const Registry& registry, Registry::RootKey root, const QString& subKey,
                       const QString& name, QString& text, bool trim);

/// Reads a value into `text`, without `trim`; `defaultText` when it cannot be read.
void readWithDefault(const Registry& registry, Registry::RootKey root, const QString& subKey,
                     const QString& name, const QString& defaultText, QString& text);

/// Writes `text` as REG_SZ; true on success.
bool writeText(Registry& registry, Registry::RootKey root, const QString& subKey,
               const QString& name, const QString& text);

} // namespace modRexistro
