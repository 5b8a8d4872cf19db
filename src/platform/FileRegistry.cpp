#include "FileRegistry.h"

#include "WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

QString fullKey(Registry::RootKey root, const QString& subKey)
{
    return (root == Registry::RootKey::CurrentUser ? u"HKEY_CURRENT_USER\\"_s
                                                   : u"HKEY_LOCAL_MACHINE\\"_s) +
           subKey;
}

} // namespace

QString FileRegistry::defaultPath()
{
    QString folder = qEnvironmentVariable("XDG_CONFIG_HOME");
    // A relative path there is invalid by the XDG rules and counts as not set.
    if (!QDir::isAbsolutePath(folder))
        folder = QDir::homePath() + u"/.config"_s;
    return QDir::cleanPath(folder + u"/Quorvex/Lurimat/registry.reg"_s);
}

std::optional<RegistryValue> FileRegistry::query(RootKey root, const QString& subKey,
                                                 const QString& name) const
{
    auto value = parsed().value(fullKey(root, subKey), name);
    if (value && value->bytes.size() > maximumBytes)
        return std::nullopt;
    return value;
}

bool FileRegistry::set(RootKey root, const QString& subKey, const QString& name,
                       const RegistryValue& value)
{
    const auto before = content();
    if (!before)
        return false;
    RegistryText text(*before);
    text.setValue(fullKey(root, subKey), name, value);
    const QByteArray after = text.toBytes();
    if (after == *before)
        return true;
    return after.size() <= maximumFileSize && replaceFile(after);
}

QList<QString> FileRegistry::valueNames(RootKey root, const QString& subKey) const
{
    return parsed().valueNames(fullKey(root, subKey)).mid(0, maximumNames);
}

/// Empty when there is no file; nothing when there is one that cannot be read.
std::optional<QByteArray> FileRegistry::content() const
{
    if (!QFileInfo::exists(m_path))
        return QByteArray();
    QFile file(m_path);
    if (!WholeFile::open(file))
        return std::nullopt;
    const qint64 size = file.size();
    if (size > maximumFileSize)
        return std::nullopt;
    // A file that changes its length meanwhile is being written by somebody else.
    QByteArray bytes = file.read(size + 1);
    if (file.error() != QFile::NoError || bytes.size() != size)
        return std::nullopt;
    return bytes;
}

const RegistryText& FileRegistry::parsed() const
{
    const QByteArray bytes = content().value_or(QByteArray());
    if (bytes != m_parsedContent) {
        m_parsed = RegistryText(bytes);
        m_parsedContent = bytes;
    }
    return m_parsed;
}

bool FileRegistry::replaceFile(const QByteArray& content) const
{
    return QDir().mkpath(QFileInfo(m_path).absolutePath()) && WholeFile::replace(m_path, content);
}
