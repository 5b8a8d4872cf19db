#include "DeviceUsers.h"

#include <QFile>

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

namespace {

namespace fs = std::filesystem;

bool isProcess(const fs::path& folder)
{
    const std::string name = folder.filename().string();
    return std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// What the processes of others have open cannot be read; and processes may end meanwhile.
bool hasOpen(const fs::path& process, const fs::path& device)
{
    const bool isPseudoTerminal = device.parent_path() == "/dev/pts";
    bool found = false;
    std::error_code error;
    for (fs::directory_iterator file(process / "fd", error), end; !error && file != end;
         file.increment(error)) {
        std::error_code unreadable;
        const fs::path target = fs::read_symlink(file->path(), unreadable);
        if (isPseudoTerminal && target.filename() == "ptmx")
            return false;
        found |= target == device;
    }
    return found;
}

} // namespace

bool isOpenSomewhere(const QString& device)
{
    const fs::path path(QFile::encodeName(device).toStdString());
    std::error_code error;
    for (fs::directory_iterator process("/proc", error), end; !error && process != end;
         process.increment(error))
        if (isProcess(process->path()) && hasOpen(process->path(), path))
            return true;
    return false;
}
