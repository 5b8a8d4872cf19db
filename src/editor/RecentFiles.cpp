#include "RecentFiles.h"

#include "Registry.h"
#include "modRexistro.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using File = RecentFiles::File;

const auto subKey = u"Software\\Quorvex\\Lurimat\\Editor";
constexpr auto root = Registry::RootKey::CurrentUser;

QString key() { return QString::fromUtf16(subKey); }

QString valueName(int index) { return u"Archivo%1"_s.arg(index + 1); }

QString absolute(const QString& path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

bool isSame(const QString& one, const QString& other)
{
#ifdef Q_OS_WIN
    return one.compare(other, Qt::CaseInsensitive) == 0;
#else
    return one == other;
#endif
}

/// The registry's texts have one byte for each character, and a path may have any.
QString encoded(const QString& text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text, " /\\:()"));
}

QString textOf(const File& file)
{
    const QString model = file.model == ClockModel::Hct7200 ? u"7200"_s : u"7300"_s;
    return u"%1|%2|%3"_s.arg(model, encoded(file.path), encoded(file.wallTitle));
}

QString decoded(const QString& text) { return QUrl::fromPercentEncoding(text.toUtf8()); }

std::optional<File> fileOf(const QString& text)
{
    const QStringList parts = text.split(u'|');
    if (parts.size() != 3 || (parts[0] != u"7200" && parts[0] != u"7300"))
        return std::nullopt;
    const ClockModel model = parts[0] == u"7200" ? ClockModel::Hct7200 : ClockModel::Hct7300;
    const File file{decoded(parts[1]), model, decoded(parts[2])};
    if (file.path.contains(QChar(u'\0')) || QDir::isRelativePath(file.path))
        return std::nullopt;
    return file;
}

/// -1 when the file is not among them.
qsizetype indexIn(const QList<File>& files, const QString& path)
{
    const auto found =
        std::find_if(files.begin(), files.end(), [wanted = absolute(path)](const File& file) {
            return isSame(file.path, wanted);
        });
    return found == files.end() ? -1 : found - files.begin();
}

} // namespace

QList<File> RecentFiles::files() const
{
    QList<File> files;
    for (int index = 0; index < mostFiles; ++index) {
        QString text;
        if (!modRexistro::readValue(m_registry, root, key(), valueName(index), text, true))
            continue;
        const auto file = fileOf(text);
        if (file && indexIn(files, file->path) < 0)
            files.append(*file);
    }
    return files;
}

std::optional<File> RecentFiles::find(const QString& path) const
{
    const QList<File> known = files();
    const qsizetype index = indexIn(known, path);
    return index < 0 ? std::nullopt : std::optional(known[index]);
}

bool RecentFiles::add(const QString& path, ClockModel model)
{
    QList<File> known = files();
    const qsizetype index = indexIn(known, path);
    const QString title = index < 0 ? QString() : known.takeAt(index).wallTitle;
    known.prepend({absolute(path), model, title});
    return write(known.mid(0, mostFiles));
}

bool RecentFiles::setWallTitle(const QString& path, const QString& title)
{
    QList<File> known = files();
    const qsizetype index = indexIn(known, path);
    if (index < 0)
        return false;
    known[index].wallTitle = title;
    return write(known);
}

bool RecentFiles::remove(const QString& path)
{
    QList<File> known = files();
    const qsizetype index = indexIn(known, path);
    if (index >= 0)
        known.removeAt(index);
    return write(known);
}

bool RecentFiles::write(const QList<File>& files)
{
    const auto hold = m_registry.holdForSave();
    if (!hold)
        return false;
    for (int index = 0; index < mostFiles; ++index) {
        const QString text = index < files.size() ? textOf(files[index]) : QString();
        QString old;
        modRexistro::readValue(m_registry, root, key(), valueName(index), old, true);
        if (text == old)
            continue;
        // One that is too long could not be read.
        const bool isKept = !text.isEmpty() && text.size() < Registry::maximumBytes;
        const bool isDone =
            isKept ? modRexistro::writeText(m_registry, root, key(), valueName(index), text)
                   : m_registry.remove(root, key(), valueName(index));
        if (!isDone)
            return false;
    }
    return true;
}
