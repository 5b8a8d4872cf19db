#include "RecoveryFolder.h"

#include "RecoveryFile.h"
#include "WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <utility>

using namespace Qt::StringLiterals;

namespace RecoveryFolder {

QString path()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + u"/recovery"_s;
}

QString workExtension() { return u".json"_s; }
QString lockExtension() { return u".lock"_s; }

std::vector<Abandoned> abandoned(const QString& folder)
{
    std::vector<Abandoned> found;
    const QFileInfoList files =
        QDir(folder).entryInfoList({u'*' + workExtension()}, QDir::Files, QDir::Time);
    for (const QFileInfo& info : files) {
        const QString file = folder + u'/' + info.completeBaseName();
        auto lock = std::make_unique<QLockFile>(file + lockExtension());
        lock->setStaleLockTime(0);
        if (!lock->tryLock())
            continue;
        // Only now: its owner may have removed it just before.
        const auto text = WholeFile::read(info.filePath(), RecoveryFile::maximumBytes);
        if (auto work = text ? RecoveryFile::read(*text) : std::nullopt)
            found.push_back({*std::move(work), info.lastModified(), file, std::move(lock)});
    }
    return found;
}

void discard(Abandoned abandoned) { QFile::remove(abandoned.file + workExtension()); }

} // namespace RecoveryFolder
