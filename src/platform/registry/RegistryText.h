#pragma once

#include "EncodedLines.h"
#include "Registry.h"
#include "RegistryStatement.h"

#include <QStringList>

/// A file of the registry editor ("Windows Registry Editor Version 5.00" or "REGEDIT4"), read and
/// edited in memory. Keys ("HKEY_CURRENT_USER\Software\…") and names ignore case. Later lines
/// override earlier ones, deletions too, as in an import. Lines that say nothing or cannot be
/// understood have no effect and are kept as they are.
class RegistryText {
public:
    /// Accepts any bytes.
    explicit RegistryText(const QByteArray& file = {});

    std::optional<RegistryValue> value(const QString& key, const QString& name) const;
    /// In the order of their first appearance. "" is the key's default value.
    QStringList valueNames(const QString& key) const;

    /// Sets a value in its line; a new one at the end of its key, with a new key at the end of the
    /// file. A line that already reads as `value` stays as it is: it may have characters that the
    /// ANSI code page lacks. Where a text above without a closing quote would take in the new
    /// line, a comment keeps them apart.
    void setValue(const QString& key, const QString& name, const RegistryValue& value);

    /// Removes every line that sets the value.
    void removeValue(const QString& key, const QString& name);

    QByteArray toBytes() const { return m_file.toBytes(); }

private:
    struct Placed {
        RegistryStatement statement;
        qsizetype line = 0;
        /// The key whose section it is in; empty if the statement deletes a key.
        QString key;
    };

    void parse();
    const Placed* find(const QString& key, const QString& name) const;
    void removeStatement(const Placed& placed);
    void guardAgainstTextAbove(qsizetype line);
    qsizetype endOfSection(const QString& key) const;

    EncodedLines m_file;
    QList<Placed> m_statements;
};
