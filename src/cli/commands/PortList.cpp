#include "PortList.h"

#include "NetworkAddress.h"
#include "PortNames.h"

#include <QJsonArray>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString stateKey(PortInformation::State state)
{
    switch (state) {
    case PortInformation::State::Free: return u"free"_s;
    case PortInformation::State::InUse: return u"inUse"_s;
    case PortInformation::State::Forbidden: return u"forbidden"_s;
    case PortInformation::State::Network: return u"network"_s;
    case PortInformation::State::Missing: break;
    }
    return u"missing"_s;
}

QString stateText(PortInformation::State state)
{
    switch (state) {
    case PortInformation::State::Free: return u"libre"_s;
    case PortInformation::State::InUse: return u"en uso"_s;
    case PortInformation::State::Forbidden: return u"sin permiso"_s;
    case PortInformation::State::Network: return u"en red"_s;
    case PortInformation::State::Missing: break;
    }
    return u"no existe"_s;
}

PortInformation informationOf(const QString& device)
{
    if (!NetworkAddress::isMeantBy(device))
        return PortInformation::of(device);
    PortInformation information;
    if (NetworkAddress::of(device))
        information.state = PortInformation::State::Network;
    return information;
}

QStringList rowOf(const PortList::Port& port)
{
    return {port.name,
            port.device,
            stateText(port.information.state),
            port.information.description,
            port.information.manufacturer,
            port.information.serialNumber};
}

/// Each column is as wide as its longest text, with two blanks between.
QString table(const QList<QStringList>& rows)
{
    QList<qsizetype> widths(rows.front().size(), 0);
    for (const QStringList& row : rows)
        for (qsizetype i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    QStringList lines;
    for (const QStringList& row : rows) {
        QString line;
        for (qsizetype i = 0; i < row.size(); ++i)
            line += row[i].leftJustified(widths[i] + 2);
        while (line.endsWith(u' '))
            line.chop(1);
        lines += line;
    }
    return lines.join(u'\n');
}

} // namespace

PortList PortList::ofThisMachine(const PortNames& names)
{
    QList<Port> ports;
    const QStringList devices = names.devices();
    for (qsizetype i = 0; i < devices.size(); ++i) {
        if (devices[i].isEmpty())
            continue;
        const PortInformation information = informationOf(devices[i]);
#ifdef Q_OS_WIN
        // There every number is a device's name.
        if (information.state == PortInformation::State::Missing &&
            !NetworkAddress::isMeantBy(devices[i]))
            continue;
#endif
        ports += {u"COM%1"_s.arg(i + 1), devices[i], information};
    }
    return PortList(ports);
}

QJsonObject PortList::json() const
{
    QJsonArray array;
    for (const Port& port : m_ports)
        array += QJsonObject{{u"port"_s, port.name},
                             {u"device"_s, port.device},
                             {u"description"_s, port.information.description},
                             {u"manufacturer"_s, port.information.manufacturer},
                             {u"serialNumber"_s, port.information.serialNumber},
                             {u"state"_s, stateKey(port.information.state)}};
    return {{u"ports"_s, array}};
}

QString PortList::text() const
{
    if (m_ports.isEmpty())
        return u"No hay ningún puerto serie: compruebe que el adaptador está conectado."_s;
    QList<QStringList> rows{{u"Puerto"_s, u"Dispositivo"_s, u"Estado"_s, u"Descripción"_s,
                             u"Fabricante"_s, u"Número de serie"_s}};
    for (const Port& port : m_ports)
        rows += rowOf(port);
    return table(rows);
}
