#pragma once

#include "Registry.h"
#include "RegistryText.h"

#include <chrono>
#include <functional>

class FileLock;

/// The registry outside Windows: one file in the text format of the Windows registry editor. The
/// settings of a Windows PC are taken over by exporting them there and copying the export here.
///
/// Each call reads the file as it is then. A write keeps all other lines and replaces the file
/// whole or not at all; programs that write at the same time wait for each other, if the file
/// system can lock. A file that exists but cannot be read (no right, not a regular file, longer
/// than maximumFileSize) counts as empty and is never replaced: writes fail.
class FileRegistry final : public Registry {
public:
    explicit FileRegistry(const QString& path) : m_path(path) {}

    /// $XDG_CONFIG_HOME/Quorvex/Lurimat/registry.reg; ~/.config if the variable is not set.
    static QString defaultPath();

    const QString& path() const { return m_path; }

    std::optional<RegistryValue> query(RootKey root, const QString& subKey,
                                       const QString& name) const override;
    /// Waits for another program that is writing, for lockPatience at most; then fails.
    bool set(RootKey root, const QString& subKey, const QString& name,
             const RegistryValue& value) override;
    /// Waits likewise.
    bool remove(RootKey root, const QString& subKey, const QString& name) override;
    /// Waits like set, then gives nothing. Within the hold, set does not wait.
    [[nodiscard]] std::shared_ptr<Hold> holdForSave() override;
    /// The first maximumNames at most.
    QList<QString> valueNames(RootKey root, const QString& subKey) const override;

    /// In bytes.
    static constexpr qint64 maximumFileSize = 1024LL * 1024;
    static constexpr qsizetype maximumNames = 256;
    static constexpr std::chrono::seconds lockPatience{3};

private:
    std::optional<QByteArray> content() const;
    bool change(const std::function<void(RegistryText& text)>& edit);
    const RegistryText& parsed(const QByteArray& content) const;
    RegistryText current() const { return parsed(content().value_or(QByteArray())); }
    QString target() const;
    std::shared_ptr<FileLock> lock();

    QString m_path;
    /// Null while there is no hold.
    std::weak_ptr<FileLock> m_lock;
    /// The file as last parsed. Used again while the file has the same bytes.
    mutable QByteArray m_parsedContent;
    mutable RegistryText m_parsed;
};
