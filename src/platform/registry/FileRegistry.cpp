#include "FileRegistry.h"

#include "FileLock.h"
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
    auto value = current().value(fullKey(root, subKey), name);
    if (value && value->bytes.size() > maximumBytes)
        return std::nullopt;
    return value;
}

bool FileRegistry::set(RootKey root, const QString& subKey, const QString& name,
                       const RegistryValue& value)
{
    const QString key = fullKey(root, subKey);
    // Kept already: that needs no right to write.
    if (current().value(key, name) == value)
        return true;
    const QString file = target();
    if (!QDir().mkpath(QFileInfo(file).absolutePath()))
        return false;
    // From the reading to the renaming: what another program saves between them would be undone.
    const FileLock lock(file + u".lock"_s, lockPatience);
    if (!lock.isHeld())
        return false;
    const auto before = content();
    if (!before)
        return false;
    RegistryText text = parsed(*before);
    text.setValue(key, name, value);
    const QByteArray after = text.toBytes();
    return after.size() <= maximumFileSize && WholeFile::replace(file, after);
}

QList<QString> FileRegistry::valueNames(RootKey root, const QString& subKey) const
{
    return current().valueNames(fullKey(root, subKey)).mid(0, maximumNames);
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

const RegistryText& FileRegistry::parsed(const QByteArray& content) const
{
    if (content != m_parsedContent) {
        m_parsed = RegistryText(content);
        m_parsedContent = content;
    }
    return m_parsed;
}

/// The file itself where the path is a link, so that all who write it use one lock.
QString FileRegistry::target() const
{
    const QFileInfo file(m_path);
    return file.isSymLink() ? file.symLinkTarget() : m_path;
}
