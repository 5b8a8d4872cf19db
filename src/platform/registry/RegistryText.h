#pragma once

#include "EncodedLines.h"
#include "Registry.h"
#include "RegistryStatement.h"

#include <QStringList>

/// A file of the registry editor ("Windows Registry Editor Version 5.00" or "REGEDIT4"), read and
/// edited in memory. Keys ("HKEY_CURRENT_USER\Software\…") and names are alike in any case; what
/// stands later in the file wins, deletions included, as an import would have it. Lines that say
/// nothing, or nothing that can be understood, take part in nothing and are kept as they are.
class RegistryText {
public:
    /// Any bytes at all.
    explicit RegistryText(const QByteArray& file = {});

    std::optional<RegistryValue> value(const QString& key, const QString& name) const;
    /// In the order in which the names first appear; "" is the key's default value.
    QStringList valueNames(const QString& key) const;

    /// Sets a value where it stands, else at the end of its key, else at the end of the file. What
    /// already reads as `value` is left untouched, since its text may hold more than the ANSI code
    /// page can say.
    void setValue(const QString& key, const QString& name, const RegistryValue& value);

    QByteArray toBytes() const { return m_file.toBytes(); }

private:
    struct Placed {
        RegistryStatement statement;
        qsizetype line = 0;
        /// The key that the statement is about, folded; empty under a key line that is damaged.
        QString key;
    };

    void parse();
    const Placed* find(const QString& foldedKey, const QString& name) const;
    qsizetype endOfSection(const QString& foldedKey) const;

    EncodedLines m_file;
    QList<Placed> m_statements;
};
