#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>
#include <optional>

/// A value of the registry: its type and its bytes. A text ends with a NUL and is in the system's
/// ANSI code page (Windows-1252 outside Windows).
struct RegistryValue {
    /// The registry's own numbers. Other types are passed on as they are.
    enum Type : quint32 { Text = 1, Dword = 4 };

    quint32 type = Text;
    QByteArray bytes;

    bool operator==(const RegistryValue&) const = default;
};

/// The registry. Win32Registry is that of Windows, FileRegistry a text file for other systems.
class Registry {
public:
    enum class RootKey { CurrentUser, LocalMachine };

    /// Keeps other programs from writing for as long as it exists.
    class Hold {
    public:
        virtual ~Hold() = default;
    };

    virtual ~Registry() = default;

    /// The value. Nothing when the key cannot be opened for reading and writing, the value cannot
    /// be read, or it is longer than maximumBytes.
    virtual std::optional<RegistryValue> query(RootKey root, const QString& subKey,
                                               const QString& name) const = 0;
    /// The same, but also for a key that the user may only read.
    virtual std::optional<RegistryValue> queryReadOnly(RootKey root, const QString& subKey,
                                                       const QString& name) const
    {
        return query(root, subKey, name);
    }
    /// Sets the value, and creates the key if needed. False when that failed.
    virtual bool set(RootKey root, const QString& subKey, const QString& name,
                     const RegistryValue& value) = 0;
    /// Removes the value, if there is one. False when that failed.
    virtual bool remove(RootKey root, const QString& subKey, const QString& name) = 0;
    /// For a save of several values, which belong together: so they are not mixed with those that
    /// another program saves. Null when another program kept the registry, or nothing can be
    /// written; the save fails then. Where the system offers no such thing, other programs are not
    /// kept out.
    [[nodiscard]] virtual std::shared_ptr<Hold> holdForSave() { return std::make_shared<Hold>(); }
    /// The names of a key's values, in the order of the registry; empty when there is no such key.
    virtual QList<QString> valueNames(RootKey root, const QString& subKey) const = 0;

    /// The longest value that is read, with its terminating NUL.
    static constexpr qsizetype maximumBytes = 1024;
};
