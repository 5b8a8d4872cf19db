#include "LinkPorts.h"

#include "CommSettings.h"
#include "LinkTrace.h"
#include "SerialPort.h"

using namespace Qt::StringLiterals;

namespace {

/// "COM1,9600,N,8,1".
QString description(const SerialPort& port)
{
    return u"COM%1,%2"_s.arg(port.portNumber()).arg(port.settings().toUpper());
}

void closeAndTell(SerialPort& port)
{
    if (port.isOpen())
        qCDebug(linkEvents).noquote() << "closed" << description(port);
    port.close();
}

} // namespace

LinkPorts::LinkPorts(SerialPort& commSerie, SerialPort& commModem, const CommSettings& settings,
                     QObject* parent)
    : QObject(parent), m_commSerie(commSerie), m_commModem(commModem), m_settings(settings)
{
    for (SerialPort* port : {&m_commSerie, &m_commModem}) {
        connect(port, &SerialPort::lost, this, [this, port] { portLost(*port); });
        connect(port, &SerialPort::openingChanged, this, &LinkPorts::openingChanged);
    }
}

bool LinkPorts::isOpening() const { return m_commSerie.isOpening() || m_commModem.isOpening(); }

bool LinkPorts::open(bool throughModem)
{
    m_savedThroughModem.reset();
    m_throughModem = throughModem;
    if (throughModem)
        closeAndTell(m_commSerie);
    else
        closeModem();
    openInUse();
    return inUse().isOpen();
}

void LinkPorts::close()
{
    closeAndTell(m_commSerie);
    closeModem();
}

void LinkPorts::ApplySettings()
{
    const bool wasOpen = m_commSerie.isOpen() || m_commModem.isOpen();
    closeAndTell(m_commSerie);
    m_commSerie.setPortNumber(m_settings.directPortNumber());
    m_commSerie.setSettings(m_settings.directLine());
    m_commSerie.setDtrEnabled(m_settings.isDirectDtrOn());
    m_commSerie.setRtsEnabled(m_settings.isDirectRtsOn());
    closeAndTell(m_commModem);
    m_commModem.setPortNumber(m_settings.modemPortNumber());
    m_commModem.setSettings(m_settings.modemLine());
    m_commModem.setDtrEnabled(true);
    m_commModem.setRtsEnabled(false);
    if (wasOpen)
        openInUse();
}

bool LinkPorts::borrowModem()
{
    if (!m_commModem.isOpen()) {
        // Kept from the first borrowing on, whatever comes of later attempts.
        if (!m_savedThroughModem)
            m_savedThroughModem = m_throughModem;
        m_throughModem = true;
        openInUse();
    }
    return m_commModem.isOpen();
}

void LinkPorts::giveModemBack()
{
    m_throughModem = m_savedThroughModem.value_or(m_throughModem);
    m_savedThroughModem.reset();
}

void LinkPorts::openInUse()
{
    SerialPort& port = inUse();
    if (!port.isOpen()) {
        m_failure.clear();
        port.open();
        // Closed while it was opening, and shown as closed already.
        if (!port.isOpen() && port.openError().isEmpty())
            return;
        if (port.isOpen())
            qCDebug(linkEvents).noquote() << "opened" << description(port) << port.deviceName();
        else
            qCDebug(linkEvents).noquote().nospace()
                << "not opened " << description(port) << ": " << port.openError();
    }
    m_failure = port.isOpen() ? QString() : port.openError();
    show(port.isOpen() ? port.deviceName() : m_failure);
}

void LinkPorts::show(const QString& toolTip) { emit VisualizaPorto(description(inUse()), toolTip); }

void LinkPorts::closeModem()
{
    if (m_commModem.isOpen()) {
        // The drop of DTR is what makes the modem hang up.
        m_commModem.setDtrEnabled(false);
        m_commModem.setDtrEnabled(true);
    }
    closeAndTell(m_commModem);
}

void LinkPorts::portLost(SerialPort& port)
{
    qCDebug(linkEvents).noquote() << "lost" << description(port) << port.deviceName();
    if (&port != &inUse())
        return;
    m_failure = u"Se ha perdido el puerto %1"_s.arg(port.deviceName());
    show(m_failure);
}
