#pragma once

#include "Registry.h"

#include <QString>
#include <QStringList>

#include <functional>

/// Finds the device for a COM number. On Windows it is the number itself. Elsewhere it is the first
/// of these that exists: the environment variable HCT_COM1 to HCT_COM16; a value of
/// HKEY_LOCAL_MACHINE\HARDWARE\DEVICEMAP\SERIALCOMM ("/dev/ttyUSB0"="COM1"); the n-th port that the
/// system lists, in natural order (ttyUSB2 before ttyUSB10).
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
    /// The devices of COM1 to COM16. Asks the system once for all.
    QStringList devices() const;

private:
    /// What the environment or the registry names; empty when neither does.
    QString namedDevice(int number) const;
    /// In natural order.
    QStringList listedDevices() const;

    const Registry& m_registry;
    Variables m_variables;
    SystemPorts m_systemPorts;
};
