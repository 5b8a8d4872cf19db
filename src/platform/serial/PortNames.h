#pragma once

#include "Registry.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>

/// Finds the device for a COM number: the path of a serial port, or the address of one at the far
/// end of a network (see NetworkAddress). It is the first of these that exists: what setDevice
/// gave; the user's own name for it (see OwnPortNames), on Windows only an address; the environment
/// variable HCT_COM1 to HCT_COM16; a value of HKEY_LOCAL_MACHINE\HARDWARE\DEVICEMAP\SERIALCOMM
/// ("/dev/ttyUSB0"="COM1"); the n-th port that the system lists, in natural order (ttyUSB2 before
/// ttyUSB10). On Windows, in place of the last three, it is the number itself.
class PortNames {
public:
    using Variables = std::function<QString(const QString& name)>;
    using SystemPorts = std::function<QStringList()>;

    explicit PortNames(const Registry& registry);
    /// `variables` takes the place of the environment.
    PortNames(const Registry& registry, Variables variables);
    PortNames(const Registry& registry, Variables variables, SystemPorts systemPorts);

    static constexpr int highestNumber = 16;

    /// The path of the device for COM `number` (1 to 16); empty when there is none. The device may
    /// not exist. Asks the system for its ports, which takes milliseconds, when nothing else names
    /// the device.
    QString device(int number) const;
    /// The same, but without those that the system lists and the numbers of Windows; empty when
    /// nothing else names the device.
    QString namedDevice(int number) const;
    /// The devices of COM1 to COM16. Asks the system once for all.
    QStringList devices() const;

    /// Names the device of a COM number for as long as this object exists.
    void setDevice(int number, const QString& device) { m_given.insert(number, device); }

private:
    /// In natural order.
    QStringList listedDevices() const;

    const Registry& m_registry;
    Variables m_variables;
    SystemPorts m_systemPorts;
    QMap<int, QString> m_given;
};
