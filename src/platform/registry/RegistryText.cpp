#include "RegistryText.h"

#include <QHash>
#include <QMap>

using namespace Qt::StringLiterals;

namespace {

using Kind = RegistryStatement::Kind;

QString folded(const QString& text) { return text.toCaseFolded(); }

/// Whether deleting the key `deleted` deletes `key` too. Both are case folded.
bool covers(const QString& deleted, const QString& key)
{
    return key == deleted || (key.startsWith(deleted) && key[deleted.size()] == u'\\');
}

} // namespace

RegistryText::RegistryText(const QByteArray& file) : m_file(file) { parse(); }

void RegistryText::parse()
{
    m_statements.clear();
    QString key;
    for (qsizetype line = 0; line < m_file.lines().size();) {
        RegistryStatement statement =
            RegistryStatement::read(m_file.lines(), line, m_file.isAnsi());
        if (statement.kind == Kind::Key)
            key = folded(statement.name);
        else if (statement.kind == Kind::KeyDeletion)
            key.clear();
        const qsizetype lineCount = statement.lineCount;
        if (statement.kind == Kind::KeyDeletion)
            m_statements.append({statement, line, folded(statement.name), {}});
        else if (statement.kind != Kind::Nothing && !key.isEmpty())
            m_statements.append({statement, line, key, folded(statement.name)});
        line += lineCount;
    }
}

const RegistryText::Placed* RegistryText::find(const QString& foldedKey, const QString& name) const
{
    const QString foldedName = folded(name);
    for (auto placed = m_statements.rbegin(); placed != m_statements.rend(); ++placed) {
        const RegistryStatement& statement = placed->statement;
        if (statement.kind == Kind::KeyDeletion && covers(placed->key, foldedKey))
            return nullptr;
        if (placed->key != foldedKey || placed->name != foldedName)
            continue;
        if (statement.kind == Kind::Value)
            return &*placed;
        if (statement.kind == Kind::ValueDeletion)
            return nullptr;
    }
    return nullptr;
}

std::optional<RegistryValue> RegistryText::value(const QString& key, const QString& name) const
{
    const Placed* placed = find(folded(key), name);
    return placed ? std::optional(placed->statement.value) : std::nullopt;
}

QStringList RegistryText::valueNames(const QString& key) const
{
    const QString foldedKey = folded(key);
    QMap<qsizetype, QString> names;
    QHash<QString, qsizetype> places;
    for (const auto& [statement, line, statementKey, name] : m_statements) {
        if (statement.kind == Kind::KeyDeletion && covers(statementKey, foldedKey)) {
            names.clear();
            places.clear();
        } else if (statementKey != foldedKey) {
            continue;
        } else if (statement.kind == Kind::Value && !places.contains(name)) {
            names.insert(line, statement.name);
            places.insert(name, line);
        } else if (statement.kind == Kind::ValueDeletion && places.contains(name)) {
            names.remove(places.take(name));
        }
    }
    return names.values();
}

void RegistryText::setValue(const QString& key, const QString& name, const RegistryValue& value)
{
    const QString foldedKey = folded(key);
    if (const Placed* placed = find(foldedKey, name)) {
        const RegistryStatement& statement = placed->statement;
        if (statement.value == value)
            return;
        m_file.replace(placed->line, statement.lineCount,
                       RegistryStatement::write(statement.name, value, m_file.isAnsi()));
        return parse();
    }
    QStringList lines = RegistryStatement::write(name, value, m_file.isAnsi());
    qsizetype place = endOfSection(foldedKey);
    if (place < 0) {
        place = m_file.lines().size();
        lines.prepend(u'[' + key + u']');
        if (place == 0)
            lines = QStringList{u"Windows Registry Editor Version 5.00"_s, u""_s} + lines;
        else if (!m_file.lines().last().text.trimmed().isEmpty())
            lines.prepend(u""_s);
    }
    m_file.replace(place, 0, lines);
    parse();
}

/// The line after the last statement of the last section of a key; -1 when it has no section, or
/// was deleted after it.
qsizetype RegistryText::endOfSection(const QString& foldedKey) const
{
    for (auto placed = m_statements.rbegin(); placed != m_statements.rend(); ++placed) {
        if (placed->statement.kind == Kind::KeyDeletion && covers(placed->key, foldedKey))
            return -1;
        if (placed->statement.kind != Kind::KeyDeletion && placed->key == foldedKey)
            return placed->line + placed->statement.lineCount;
    }
    return -1;
}
