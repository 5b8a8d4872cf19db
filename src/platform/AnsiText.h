#pragma once

#include <QByteArray>
#include <QString>

/// Conversion to and from the system's ANSI code page, which the texts in the registry and in text
/// files have. On Windows it is the one that is set there, elsewhere Windows-1252.
namespace AnsiText {

/// Makes one byte of each UTF-16 unit. A unit that the code page lacks becomes "?".
QByteArray fromUnicode(QStringView text);
/// Makes one character of each byte. The five bytes that Windows-1252 does not use (0x81, 0x8D,
/// 0x8F, 0x90, 0x9D) become the control characters with the same number, as on Windows.
QString toUnicode(QByteArrayView bytes);

} // namespace AnsiText
