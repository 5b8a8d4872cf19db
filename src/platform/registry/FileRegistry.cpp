#include "FileRegistry.h"

#include "FileLock.h"
#include "WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// Links that lead in a circle end here.
constexpr int mostLinks = 100;

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
    // By the XDG rules a relative path is invalid and counts as not set.
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
    // A value that is stored already needs no right to write.
    if (current().value(key, name) == value)
        return true;
    return change([&](RegistryText& text) { text.setValue(key, name, value); });
}

bool FileRegistry::remove(RootKey root, const QString& subKey, const QString& name)
{
    const QString key = fullKey(root, subKey);
    const auto before = content();
    if (!before)
        return false;
    if (!parsed(*before).value(key, name))
        return true;
    return change([&](RegistryText& text) { text.removeValue(key, name); });
}

bool FileRegistry::change(const std::function<void(RegistryText& text)>& edit)
{
    // Locked from reading to renaming, or what another program saves meanwhile would be lost.
    const auto locked = lock();
    if (!locked)
        return false;
    const auto before = content();
    if (!before)
        return false;
    RegistryText text = parsed(*before);
    edit(text);
    const QByteArray after = text.toBytes();
    return after.size() <= maximumFileSize && WholeFile::replace(target(), after);
}

std::shared_ptr<Registry::Hold> FileRegistry::holdForSave() { return lock(); }

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
    // If its length changed meanwhile, another program is writing the file.
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

/// Where the links of the path lead, so that all programs use the same lock file. Also when there
/// is no such file yet, which so comes to be there.
QString FileRegistry::target() const
{
    QFileInfo file(m_path);
    for (int links = 0; file.isSymLink() && links < mostLinks; ++links)
        file.setFile(file.symLinkTarget());
    return file.filePath();
}

/// The lock of the present hold, or another; null when another program kept it or the folder cannot
/// be made.
std::shared_ptr<FileLock> FileRegistry::lock()
{
    if (auto held = m_lock.lock())
        return held;
    const QString file = target();
    if (!QDir().mkpath(QFileInfo(file).absolutePath()))
        return nullptr;
    auto lock = std::make_shared<FileLock>(file + u".lock"_s, lockPatience);
    if (!lock->mayPass())
        return nullptr;
    m_lock = lock;
    return lock;
}
