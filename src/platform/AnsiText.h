#pragma once

#include <QByteArray>
#include <QString>

/// The system's ANSI code page, in which texts cross the registry's border and lie in text files:
/// Windows' own there, elsewhere Windows-1252.
namespace AnsiText {

/// One byte a UTF-16 unit; a unit that the code page lacks becomes "?".
QByteArray fromUnicode(QStringView text);
/// Every byte stands for a character. The five that the code page leaves unused (0x81, 0x8D, 0x8F,
/// 0x90, 0x9D) are the control characters of the same number, as Windows has them.
QString toUnicode(QByteArrayView bytes);

} // namespace AnsiText
