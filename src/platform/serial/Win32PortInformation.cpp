#include "PortInformation.h"

#include <windows.h>

#include <setupapi.h>

using namespace Qt::StringLiterals;

namespace {

/// The class "Ports (COM & LPT)" of the device manager.
constexpr GUID portsClass{
    0x4d36e978, 0xe325, 0x11ce, {0xbf, 0xc1, 0x08, 0x00, 0x2b, 0xe1, 0x03, 0x18}};

constexpr DWORD longestText = 256;

PortInformation::State stateOf(const QString& device)
{
    const QString path = u"\\\\.\\"_s + device;
    const HANDLE port =
        CreateFileW(reinterpret_cast<const wchar_t*>(path.utf16()), GENERIC_READ | GENERIC_WRITE, 0,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (port == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_ACCESS_DENIED ? PortInformation::State::InUse
                                                     : PortInformation::State::Missing;
    CloseHandle(port);
    return PortInformation::State::Free;
}

/// The ports that are plugged in, as the device manager shows them.
class PluggedPorts {
public:
    PluggedPorts() : m_set(SetupDiGetClassDevsW(&portsClass, nullptr, nullptr, DIGCF_PRESENT)) {}
    ~PluggedPorts() { SetupDiDestroyDeviceInfoList(m_set); }
    PluggedPorts(const PluggedPorts&) = delete;
    PluggedPorts& operator=(const PluggedPorts&) = delete;

    /// Goes on to the next one; false when there is none.
    bool next() { return SetupDiEnumDeviceInfo(m_set, m_index++, &m_port) != 0; }

    /// "COM3"; empty for a printer's port.
    QString name()
    {
        const HKEY key =
            SetupDiOpenDevRegKey(m_set, &m_port, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
        if (key == INVALID_HANDLE_VALUE)
            return {};
        wchar_t text[longestText]{};
        DWORD bytes = sizeof(text);
        RegGetValueW(key, nullptr, L"PortName", RRF_RT_REG_SZ, nullptr, text, &bytes);
        RegCloseKey(key);
        return QString::fromWCharArray(text);
    }
    QString property(DWORD which)
    {
        wchar_t text[longestText]{};
        // One character less, so that there is always an end.
        SetupDiGetDeviceRegistryPropertyW(m_set, &m_port, which, nullptr,
                                          reinterpret_cast<BYTE*>(text),
                                          sizeof(text) - sizeof(wchar_t), nullptr);
        return QString::fromWCharArray(text);
    }
    /// The serial number of a USB adapter is the last part of its identifier. Where it has none,
    /// Windows makes an identifier with "&".
    QString serialNumber()
    {
        wchar_t text[longestText]{};
        SetupDiGetDeviceInstanceIdW(m_set, &m_port, text, longestText, nullptr);
        const QString identifier = QString::fromWCharArray(text);
        const QString last = identifier.section(u'\\', -1);
        return identifier.startsWith(u"USB\\"_s) && !last.contains(u'&') ? last : QString();
    }

private:
    const HDEVINFO m_set;
    DWORD m_index = 0;
    SP_DEVINFO_DATA m_port{sizeof(SP_DEVINFO_DATA), {}, 0, 0};
};

} // namespace

PortInformation PortInformation::of(const QString& device)
{
    PortInformation information;
    information.state = stateOf(device);
    PluggedPorts ports;
    while (ports.next()) {
        if (ports.name() != device)
            continue;
        information.description = ports.property(SPDRP_DEVICEDESC);
        information.manufacturer = ports.property(SPDRP_MFG);
        information.serialNumber = ports.serialNumber();
    }
    return information;
}
