#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/// A value as the registry gives it: its type and its bytes. A text carries its terminating NUL and
/// is in the system's ANSI code page (Windows-1252 where there is no Windows).
struct RegistryValue {
    /// The numbers of the registry itself; other types exist and are passed on as they are.
    enum Type : quint32 { Text = 1, Dword = 4 };

    quint32 type = Text;
    QByteArray bytes;

    bool operator==(const RegistryValue&) const = default;
};

/// The registry, or what stands for it. Two back ends: the Windows registry, and elsewhere one file
/// in the registry editor's text format.
class Registry {
public:
    enum class RootKey { CurrentUser, LocalMachine };

    virtual ~Registry() = default;

    /// The value, or nothing when the key cannot be opened to read and to write, the value cannot
    /// be read, or is longer than `maximumBytes` bytes.
    virtual std::optional<RegistryValue> query(RootKey root, const QString& subKey,
                                               const QString& name) const = 0;
    /// The same, also where the user may only read the key.
    virtual std::optional<RegistryValue> queryReadOnly(RootKey root, const QString& subKey,
                                                       const QString& name) const
    {
        return query(root, subKey, name);
    }
    /// Creates the key where needed and sets the value. False when it could not be kept.
    virtual bool set(RootKey root, const QString& subKey, const QString& name,
                     const RegistryValue& value) = 0;
    /// The names of the values of a key, in the order of the registry; none when it is not there.
    virtual QList<QString> valueNames(RootKey root, const QString& subKey) const = 0;

    /// What a caller's buffer holds: 1024 characters, the terminating NUL among them.
    static constexpr qsizetype maximumBytes = 1024;
};
