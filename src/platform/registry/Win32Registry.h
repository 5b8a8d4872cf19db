#pragma once

#include "Registry.h"

/// The registry of Windows, through its ANSI functions.
class Win32Registry final : public Registry {
public:
    std::optional<RegistryValue> query(RootKey root, const QString& subKey,
                                       const QString& name) const override;
    std::optional<RegistryValue> queryReadOnly(RootKey root, const QString& subKey,
                                               const QString& name) const override;
    bool set(RootKey root, const QString& subKey, const QString& name,
             const RegistryValue& value) override;
    bool remove(RootKey root, const QString& subKey, const QString& name) override;
    QList<QString> valueNames(RootKey root, const QString& subKey) const override;
};
