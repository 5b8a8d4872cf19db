#include "SoakResources.h"

#include <QByteArray>

#include <span>

#include <windows.h>

// After windows.h.
#include <psapi.h>
#include <winternl.h>

using namespace Qt::StringLiterals;

namespace {

/// What the system tells of one handle of any process.
struct HandleEntry {
    USHORT process; ///< the lower half of its number
    USHORT trace;
    UCHAR type;
    UCHAR attributes;
    USHORT handle;
    void* object;
    ULONG access;
};
struct HandleList {
    ULONG count;
    HandleEntry entries[1];
};
constexpr auto handleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
constexpr auto listTooLong = static_cast<NTSTATUS>(0xC0000004);

/// The list of the system, because GetProcessHandleCount tells 0 under wine.
QStringList openHandles()
{
    QByteArray list(qsizetype{1} << 16, '\0');
    ULONG size = 0;
    while (NtQuerySystemInformation(handleInformation, list.data(), static_cast<ULONG>(list.size()),
                                    &size) == listTooLong)
        list.resize(2 * list.size());
    const auto* handles = reinterpret_cast<const HandleList*>(list.constData());
    const auto process = static_cast<USHORT>(GetCurrentProcessId());
    QStringList types;
    for (const HandleEntry& entry : std::span(&handles->entries[0], handles->count)) {
        if (entry.process == process)
            types += u"type %1"_s.arg(entry.type);
    }
    types.sort();
    return types;
}

} // namespace

SoakResources SoakResources::ofThisProcess()
{
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    constexpr auto kilobyte = 1024;
    SoakResources now;
    now.kilobytes = static_cast<qint64>(memory.WorkingSetSize / kilobyte);
    now.ownKilobytes = static_cast<qint64>(memory.PagefileUsage / kilobyte);
    now.descriptors = openHandles();
    return now;
}
