#include "PortLock.h"

#include <QFileInfo>
#include <QLockFile>

#include <cerrno>
#include <optional>

#include <signal.h>

using namespace Qt::StringLiterals;

namespace {

/// The path of the toolkit's lock file, found by the same rules: it has no function that tells.
QString lockFileOf(const QString& device)
{
    QString name = device;
    if (name.startsWith(u"/dev/"_s))
        name.remove(0, 5);
    name.replace(u'/', u'_');
    for (const auto& folder :
         {u"/var/lock"_s, u"/etc/locks"_s, u"/var/spool/locks"_s, u"/var/spool/uucp"_s, u"/tmp"_s,
          u"/var/tmp"_s, u"/var/lock/lockdev"_s, u"/run/lock"_s}) {
        QString file = folder + u"/LCK.."_s + name;
        const QFileInfo info(folder);
        if (info.isReadable() && (QFileInfo::exists(file) || info.isWritable()))
            return file;
    }
    return {};
}

bool isRunning(qint64 process)
{
    // Signals to a process of another user fail with EPERM: it exists.
    return ::kill(static_cast<pid_t>(process), 0) == 0 || errno != ESRCH;
}

/// The process that has written the lock file; none when there is no file.
std::optional<qint64> holderOf(const QString& file)
{
    qint64 process = 0;
    QString host;
    QString program;
    const bool hasHolder = QLockFile(file).getLockInfo(&process, &host, &program);
    return hasHolder ? std::optional(process) : std::nullopt;
}

} // namespace

bool isLocked(const QString& device)
{
    const auto holder = holderOf(lockFileOf(device));
    return holder && isRunning(*holder);
}

QString abandonedLockFile(const QString& device)
{
    QString file = lockFileOf(device);
    const auto holder = holderOf(file);
    if (!holder || isRunning(*holder))
        return {};
    return file;
}
