#include "SameFile.h"

#include <QDir>
#include <QFileInfo>

#include <filesystem>

namespace {

/// Where a path leads to that has no file yet.
QString targetOf(const QString& path)
{
    // A circle of links leads nowhere.
    constexpr int mostLinks = 40;
    QFileInfo file(path);
    for (int links = 0; links < mostLinks && file.isSymLink(); ++links)
        file.setFile(file.symLinkTarget());
    return QDir(file.dir().canonicalPath()).filePath(file.fileName());
}

#ifdef Q_OS_WIN
constexpr auto lettersOfNames = Qt::CaseInsensitive;
#else
constexpr auto lettersOfNames = Qt::CaseSensitive;
#endif

} // namespace

bool isSameFile(const QString& one, const QString& other)
{
    if (one.isEmpty() || other.isEmpty())
        return false;
    std::error_code ignored;
    return std::filesystem::equivalent(QFileInfo(one).filesystemFilePath(),
                                       QFileInfo(other).filesystemFilePath(), ignored) ||
           targetOf(one).compare(targetOf(other), lettersOfNames) == 0;
}
