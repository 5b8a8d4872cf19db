#include "Win32Registry.h"

#include "AnsiText.h"

#include <windows.h>

namespace {

/// The rights with which every key is opened, also for reading only. This is intentional.
constexpr REGSAM readAndWrite = 0x2003F;

HKEY rootKey(Registry::RootKey root)
{
    return root == Registry::RootKey::CurrentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

std::optional<RegistryValue> valueOf(Registry::RootKey root, const QString& subKey,
                                     const QString& name, REGSAM rights)
{
    HKEY key = nullptr;
    if (RegOpenKeyExA(rootKey(root), AnsiText::fromUnicode(subKey).constData(), 0, rights, &key) !=
        ERROR_SUCCESS)
        return std::nullopt;
    QByteArray buffer(Registry::maximumBytes, '\0');
    DWORD type = REG_NONE;
    DWORD size = static_cast<DWORD>(buffer.size());
    const LSTATUS status = RegQueryValueExA(key, AnsiText::fromUnicode(name).constData(), nullptr,
                                            &type, reinterpret_cast<BYTE*>(buffer.data()), &size);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS)
        return std::nullopt;
    buffer.truncate(static_cast<qsizetype>(size));
    return RegistryValue{static_cast<quint32>(type), buffer};
}

} // namespace

std::optional<RegistryValue> Win32Registry::query(RootKey root, const QString& subKey,
                                                  const QString& name) const
{
    return valueOf(root, subKey, name, readAndWrite);
}

std::optional<RegistryValue> Win32Registry::queryReadOnly(RootKey root, const QString& subKey,
                                                          const QString& name) const
{
    // Ordinary users may only read the keys of the machine.
    auto value = query(root, subKey, name);
    return value ? value : valueOf(root, subKey, name, KEY_READ);
}

bool Win32Registry::set(RootKey root, const QString& subKey, const QString& name,
                        const RegistryValue& value)
{
    HKEY key = nullptr;
    if (RegCreateKeyExA(rootKey(root), AnsiText::fromUnicode(subKey).constData(), 0, nullptr,
                        REG_OPTION_NON_VOLATILE, readAndWrite, nullptr, &key,
                        nullptr) != ERROR_SUCCESS)
        return false;
    if (RegSetValueExA(key, AnsiText::fromUnicode(name).constData(), 0, value.type,
                       reinterpret_cast<const BYTE*>(value.bytes.constData()),
                       static_cast<DWORD>(value.bytes.size())) != ERROR_SUCCESS) {
        RegCloseKey(key);
        return false;
    }
    // After a successful write the key stays open until the program ends. This is intentional.
    return true;
}

bool Win32Registry::remove(RootKey root, const QString& subKey, const QString& name)
{
    HKEY key = nullptr;
    const LSTATUS opened = RegOpenKeyExA(rootKey(root), AnsiText::fromUnicode(subKey).constData(),
                                         0, readAndWrite, &key);
    if (opened != ERROR_SUCCESS)
        return opened == ERROR_FILE_NOT_FOUND;
    const LSTATUS removed = RegDeleteValueA(key, AnsiText::fromUnicode(name).constData());
    RegCloseKey(key);
    return removed == ERROR_SUCCESS || removed == ERROR_FILE_NOT_FOUND;
}

QList<QString> Win32Registry::valueNames(RootKey root, const QString& subKey) const
{
    QList<QString> names;
    HKEY key = nullptr;
    if (RegOpenKeyExA(rootKey(root), AnsiText::fromUnicode(subKey).constData(), 0, KEY_READ,
                      &key) != ERROR_SUCCESS)
        return names;
    // The registry limits the name of a value to 16383 characters.
    QByteArray buffer(16384, '\0');
    for (DWORD index = 0;; ++index) {
        DWORD size = static_cast<DWORD>(buffer.size());
        if (RegEnumValueA(key, index, buffer.data(), &size, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS)
            break;
        names.append(AnsiText::toUnicode(buffer.first(static_cast<qsizetype>(size))));
    }
    RegCloseKey(key);
    return names;
}
