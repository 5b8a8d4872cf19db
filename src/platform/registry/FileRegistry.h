#pragma once

#include "Registry.h"
#include "RegistryText.h"

#include <chrono>

/// The registry where there is no Windows: one file in the registry editor's text format, so that
/// an export from Windows can simply be put there.
///
/// Every call sees the file as it is at that moment. A write keeps every line that it does not set
/// and is whole or not at all; other programs that write wait for it. A file that is there but
/// cannot be read (no right to, not a plain file, longer than maximumFileSize) reads as empty and
/// is never replaced: writes fail.
class FileRegistry final : public Registry {
public:
    explicit FileRegistry(const QString& path) : m_path(path) {}

    /// $XDG_CONFIG_HOME/Quorvex/Lurimat/registry.reg; ~/.config where the variable is not set.
    static QString defaultPath();

    const QString& path() const { return m_path; }

    std::optional<RegistryValue> query(RootKey root, const QString& subKey,
                                       const QString& name) const override;
    /// Waits for a program that is writing just now, lockPatience at most; then it fails.
    bool set(RootKey root, const QString& subKey, const QString& name,
             const RegistryValue& value) override;
    /// At most the first maximumNames.
    QList<QString> valueNames(RootKey root, const QString& subKey) const override;

    static constexpr qint64 maximumFileSize = 1024 * 1024;
    static constexpr qsizetype maximumNames = 256;
    static constexpr std::chrono::seconds lockPatience{3};

private:
    std::optional<QByteArray> content() const;
    const RegistryText& parsed(const QByteArray& content) const;
    RegistryText current() const { return parsed(content().value_or(QByteArray())); }
    QString target() const;

    QString m_path;
    /// The file as last parsed; used again as long as the file holds these very bytes.
    mutable QByteArray m_parsedContent;
    mutable RegistryText m_parsed;
};
