#include "RegistryText.h"

#include <QMap>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

using Kind = RegistryStatement::Kind;

/// Whether two keys or names are the same.
bool alike(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

struct CaseInsensitiveOrder {
    bool operator()(const QString& a, const QString& b) const
    {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    }
};

/// Whether the statement deletes `key`, or a key that contains it.
bool deletes(const RegistryStatement& statement, const QString& key)
{
    const QString& deleted = statement.name;
    return statement.kind == Kind::KeyDeletion && key.startsWith(deleted, Qt::CaseInsensitive) &&
           (key.size() == deleted.size() || key[deleted.size()] == u'\\');
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
            key = statement.name;
        else if (statement.kind == Kind::KeyDeletion)
            key.clear();
        const qsizetype lineCount = statement.lineCount;
        if (statement.kind == Kind::KeyDeletion ||
            (statement.kind != Kind::Nothing && !key.isEmpty()))
            m_statements.append({std::move(statement), line, key});
        line += lineCount;
    }
}

const RegistryText::Placed* RegistryText::find(const QString& key, const QString& name) const
{
    for (auto placed = m_statements.rbegin(); placed != m_statements.rend(); ++placed) {
        const RegistryStatement& statement = placed->statement;
        if (deletes(statement, key))
            return nullptr;
        if (!alike(statement.name, name) || !alike(placed->key, key))
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
    const Placed* placed = find(key, name);
    return placed ? std::optional(placed->statement.value) : std::nullopt;
}

QStringList RegistryText::valueNames(const QString& key) const
{
    // The line of each name, and the names by their lines.
    std::map<QString, qsizetype, CaseInsensitiveOrder> places;
    QMap<qsizetype, QString> names;
    for (const auto& [statement, line, statementKey] : m_statements) {
        if (deletes(statement, key)) {
            names.clear();
            places.clear();
        } else if (!alike(statementKey, key)) {
            continue;
        } else if (statement.kind == Kind::Value && places.emplace(statement.name, line).second) {
            names.insert(line, statement.name);
        } else if (statement.kind == Kind::ValueDeletion) {
            if (const auto place = places.find(statement.name); place != places.end()) {
                names.remove(place->second);
                places.erase(place);
            }
        }
    }
    return names.values();
}

void RegistryText::setValue(const QString& key, const QString& name, const RegistryValue& value)
{
    const Placed* before = find(key, name);
    if (before && before->statement.value == value)
        return;
    QStringList lines =
        RegistryStatement::write(before ? before->statement.name : name, value, m_file.isAnsi());
    const qsizetype valueLines = lines.size();
    qsizetype place = before ? before->line : endOfSection(key);
    if (place < 0) {
        place = m_file.lines().size();
        lines.prepend(u'[' + key + u']');
        if (place == 0)
            lines = QStringList{u"Windows Registry Editor Version 5.00"_s, u""_s} + lines;
        else if (!m_file.lines().last().text.trimmed().isEmpty())
            lines.prepend(u""_s);
    }
    m_file.replace(place, before ? before->statement.lineCount : 0, lines);
    parse();
    const Placed* after = find(key, name);
    if (!after || after->line != place + lines.size() - valueLines)
        guardAgainstTextAbove(place);
}

void RegistryText::removeValue(const QString& key, const QString& name)
{
    // An earlier line would come into force.
    while (const Placed* placed = find(key, name))
        removeStatement(*placed);
}

void RegistryText::removeStatement(const Placed& placed)
{
    const qsizetype line = placed.line;
    const qsizetype count = placed.statement.lineCount;
    QList<qsizetype> others;
    for (const Placed& other : m_statements)
        if (other.line != line)
            others += other.line < line ? other.line : other.line - count;
    m_file.replace(line, count, {});
    parse();
    if (std::equal(
            m_statements.begin(), m_statements.end(), others.begin(), others.end(),
            [](const Placed& other, qsizetype otherLine) { return other.line == otherLine; }))
        return;
    guardAgainstTextAbove(line);
}

/// A text above goes on in this line. What follows the quote in the comment damages it.
void RegistryText::guardAgainstTextAbove(qsizetype line)
{
    m_file.replace(line, 0, {u";\"The text above has no closing quote"_s});
    parse();
}

/// The line after the last statement of the last section of a key; -1 when it has no section, or
/// was deleted after it.
qsizetype RegistryText::endOfSection(const QString& key) const
{
    for (auto placed = m_statements.rbegin(); placed != m_statements.rend(); ++placed) {
        if (deletes(placed->statement, key))
            return -1;
        if (alike(placed->key, key))
            return placed->line + placed->statement.lineCount;
    }
    return -1;
}
