#pragma once

#include "Registry.h"

#include <QMap>

/// A registry in memory.
class MemoryRegistry final : public Registry {
public:
    /// Values by "HKCU\sub-key|name" or "HKLM\…".
    QMap<QString, RegistryValue> values;
    /// Sub-keys that the user may only read.
    QStringList readOnlyKeys;
    /// How many writes succeed before they fail; below 0 all succeed.
    int writesLeft = -1;
    QStringList written;
    /// Another program holds it, and does not let go.
    bool isHeldElsewhere = false;

    static QString path(RootKey root, const QString& subKey, const QString& name)
    {
        return (root == RootKey::CurrentUser ? QStringLiteral("HKCU\\")
                                             : QStringLiteral("HKLM\\")) +
               subKey + QStringLiteral("|") + name;
    }
    /// A REG_SZ value of the current user, ASCII.
    void setText(const QString& subKey, const QString& name, const QByteArray& text)
    {
        values.insert(path(RootKey::CurrentUser, subKey, name), {RegistryValue::Text, text + '\0'});
    }
    QByteArray text(const QString& subKey, const QString& name) const
    {
        QByteArray bytes = values.value(path(RootKey::CurrentUser, subKey, name)).bytes;
        if (bytes.endsWith('\0'))
            bytes.chop(1);
        return bytes;
    }

    std::optional<RegistryValue> query(RootKey root, const QString& subKey,
                                       const QString& name) const override
    {
        return readOnlyKeys.contains(subKey) ? std::nullopt : queryReadOnly(root, subKey, name);
    }
    std::optional<RegistryValue> queryReadOnly(RootKey root, const QString& subKey,
                                               const QString& name) const override
    {
        const auto found = values.find(path(root, subKey, name));
        if (found == values.end() || found->bytes.size() > maximumBytes)
            return std::nullopt;
        return *found;
    }
    bool set(RootKey root, const QString& subKey, const QString& name,
             const RegistryValue& value) override
    {
        if (writesLeft == 0)
            return false;
        if (writesLeft > 0)
            --writesLeft;
        values.insert(path(root, subKey, name), value);
        written.append(path(root, subKey, name));
        return true;
    }
    bool remove(RootKey root, const QString& subKey, const QString& name) override
    {
        values.remove(path(root, subKey, name));
        return true;
    }
    std::shared_ptr<Hold> holdForSave() override
    {
        return isHeldElsewhere ? nullptr : Registry::holdForSave();
    }
    QList<QString> valueNames(RootKey root, const QString& subKey) const override
    {
        QList<QString> names;
        const QString prefix = path(root, subKey, QString());
        for (auto it = values.begin(); it != values.end(); ++it)
            if (it.key().startsWith(prefix))
                names.append(it.key().mid(prefix.size()));
        return names;
    }
};
