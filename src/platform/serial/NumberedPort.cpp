#include "NumberedPort.h"

#include <utility>

NumberedPort::NumberedPort(const PortNames& names, Factory makePort, QObject* parent)
    : SerialPort(parent), m_names(names), m_makePort(std::move(makePort))
{}

NumberedPort::~NumberedPort()
{
    if (isOpen())
        closeDevice();
}

QString NumberedPort::deviceName() const
{
    return isOpen() ? m_port->deviceName() : m_names.device(portNumber());
}

std::chrono::milliseconds NumberedPort::answerAllowance() const
{
    return isOpen() ? m_port->answerAllowance() : std::chrono::milliseconds::zero();
}

void NumberedPort::clearInput()
{
    SerialPort::clearInput();
    if (isOpen())
        m_port->clearInput();
}

void NumberedPort::clearOutput()
{
    if (isOpen())
        m_port->clearOutput();
}

void NumberedPort::write(const QByteArray& bytes)
{
    if (isOpen())
        m_port->write(bytes);
}

QString NumberedPort::openDevice()
{
    // Later: this may be called when the earlier one tells that its device is gone.
    if (m_port)
        m_port.release()->deleteLater();
    m_port = m_makePort(m_names.namedDevice(portNumber()));
    // So that those that are to be deleted later do not outlive this one.
    m_port->setParent(this);
    m_port->standBehind(*this);
    m_port->setPortNumber(portNumber());
    m_port->setSettings(settings());
    m_port->setDtrEnabled(isDtrEnabled());
    m_port->setRtsEnabled(isRtsEnabled());
    m_port->open();
    return m_port->openError();
}

void NumberedPort::applyLines()
{
    // Only what has changed: a port sets both lines at each change.
    if (m_port->isDtrEnabled() != isDtrEnabled())
        m_port->setDtrEnabled(isDtrEnabled());
    if (m_port->isRtsEnabled() != isRtsEnabled())
        m_port->setRtsEnabled(isRtsEnabled());
}
