#pragma once

#include "Registry.h"

#include <QString>

/// Reading and writing text values of the registry. Texts cross its border in the system's ANSI
/// code page (Windows-1252 where there is no Windows).
namespace modRexistro {

/// Reads a value into `text`; false, and an empty text, when key or value cannot be read. REG_SZ:
/// the text, without its last character if that is NUL, or cut at the first NUL with `trim`.
/// REG_DWORD: its bytes from last to first in hexadecimal without leading zeros, joined and read as
/// one hexadecimal number, in decimal (so the zero inside 05 01 00 00 is lost: 21, not 261; stored
/// values rely on nothing else). Any other type: an empty text and true.
bool readValue(const Registry& registry, Registry::RootKey root, const QString& subKey,
               const QString& name, QString& text, bool trim);

/// The same for a key that the user may only read: one of the system's own.
bool readReadOnlyValue(const Registry& registry, Registry::RootKey root, const QString& subKey,
                       const QString& name, QString& text, bool trim);

/// The value read, or `defaultText` when it cannot be read.
void readWithDefault(const Registry& registry, Registry::RootKey root, const QString& subKey,
                     const QString& name, const QString& defaultText, QString& text);

/// Writes `text` as REG_SZ; true on success.
bool writeText(Registry& registry, Registry::RootKey root, const QString& subKey,
               const QString& name, const QString& text);

} // namespace modRexistro
