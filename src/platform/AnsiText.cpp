#include "AnsiText.h"

#include <algorithm>
#include <array>

#ifdef Q_OS_WIN

#include <windows.h>

// Through the Win32 functions, because the toolkit's conversion drops a NUL at the end of a text.

QByteArray AnsiText::fromUnicode(QStringView text)
{
    const auto* units = reinterpret_cast<const wchar_t*>(text.utf16());
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_ACP, 0, units, length, nullptr, 0, nullptr, nullptr);
    QByteArray bytes(size, Qt::Uninitialized);
    WideCharToMultiByte(CP_ACP, 0, units, length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

QString AnsiText::toUnicode(QByteArrayView bytes)
{
    const int length = static_cast<int>(bytes.size());
    const int size = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0);
    QString text(size, Qt::Uninitialized);
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, reinterpret_cast<wchar_t*>(text.data()),
                        size);
    return text;
}

#else

namespace {

/// The characters 0x80 to 0x9F of Windows-1252. The others are the same as in Latin-1.
constexpr std::array<char16_t, 32> upperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char byteOf(char16_t unit)
{
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF))
        return static_cast<char>(unit);
    const auto found = std::find(upperControls.begin(), upperControls.end(), unit);
    if (found == upperControls.end())
        return '?';
    return static_cast<char>(0x80 + (found - upperControls.begin()));
}

char16_t unitOf(char byte)
{
    const auto number = static_cast<unsigned char>(byte);
    return number < 0x80 || number >= 0xA0 ? number : upperControls[number - 0x80U];
}

} // namespace

QByteArray AnsiText::fromUnicode(QStringView text)
{
    QByteArray bytes(text.size(), Qt::Uninitialized);
    std::transform(text.utf16(), text.utf16() + text.size(), bytes.begin(), byteOf);
    return bytes;
}

QString AnsiText::toUnicode(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [](char byte) { return QChar(unitOf(byte)); });
    return text;
}

#endif
