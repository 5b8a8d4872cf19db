#include "SerialPort.h"

void SerialPort::setDtrEnabled(bool on)
{
    m_dtr = on;
    if (isOpen())
        applyLines();
}

void SerialPort::setRtsEnabled(bool on)
{
    m_rts = on;
    if (isOpen())
        applyLines();
}

void SerialPort::open()
{
    if (isOpen())
        return;
    m_input.clear();
    m_openError = openDevice();
}

void SerialPort::close()
{
    if (!isOpen())
        return;
    closeDevice();
    m_input.clear();
}

QByteArray SerialPort::read()
{
    const qsizetype wanted = m_readLength > 0 ? m_readLength : m_input.size();
    const QByteArray bytes = m_input.left(wanted);
    m_input.remove(0, bytes.size());
    return bytes;
}

void SerialPort::clearInput() { m_input.clear(); }

void SerialPort::deliver(const QByteArray& bytes)
{
    if (bytes.isEmpty() || !isOpen())
        return;
    m_input.append(bytes);
    if (m_input.size() > inputCapacity)
        m_input.remove(0, m_input.size() - inputCapacity);
    if (m_receiveThreshold > 0 && m_input.size() >= m_receiveThreshold)
        emit received();
}

void SerialPort::deviceGone()
{
    if (!isOpen())
        return;
    closeDevice();
    m_input.clear();
    emit lost();
}
