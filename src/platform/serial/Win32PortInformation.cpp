#include "PortInformation.h"

#include <windows.h>

PortInformation PortInformation::of(const QString& device)
{
    PortInformation information;
    const QString path = QStringLiteral("\\\\.\\") + device;
    const HANDLE port =
        CreateFileW(reinterpret_cast<const wchar_t*>(path.utf16()), GENERIC_READ | GENERIC_WRITE, 0,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (port != INVALID_HANDLE_VALUE) {
        CloseHandle(port);
        information.state = State::Free;
    } else if (GetLastError() == ERROR_ACCESS_DENIED) {
        information.state = State::InUse;
    }
    return information;
}
