#pragma once

#include "PortInformation.h"

#include <QJsonObject>
#include <QList>
#include <QString>

class PortNames;

/// What `ports` tells: the COM numbers that have a device, and what the system knows of it.
class PortList {
public:
    struct Port {
        /// "COM1".
        QString name;
        QString device;
        PortInformation information;
    };

    explicit PortList(QList<Port> ports) : m_ports(std::move(ports)) {}
    static PortList ofThisMachine(const PortNames& names);

    /// {"ports":[…]}, each with the texts port, device, description, manufacturer, serialNumber and
    /// state, which is "free", "inUse", "forbidden", "missing" or "network".
    QJsonObject json() const;
    /// A table with a heading; a sentence when there is no port.
    QString text() const;

private:
    QList<Port> m_ports;
};
