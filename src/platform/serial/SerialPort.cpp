#include "SerialPort.h"

#include "Wipe.h"

#include <algorithm>
#include <utility>

SerialPort::~SerialPort() { wipe(m_input); }

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
    if (isOpen() || m_opening)
        return;
    // The largest size it can have: growing would leave copies in memory.
    m_input.reserve(2 * inputCapacity);
    m_openError.clear();
    m_openError = openDevice();
}

void SerialPort::setOpening(bool opening)
{
    m_opening = opening;
    if (m_front)
        m_front->setOpening(opening);
    emit openingChanged();
}

void SerialPort::close()
{
    if (m_opening)
        abandonOpening();
    if (!isOpen())
        return;
    closeDevice();
    wipe(m_input);
}

void SerialPort::setReceiveThreshold(int bytes)
{
    m_receiveThreshold = bytes;
    m_awaited = 0;
}

qsizetype SerialPort::missingBytes() const
{
    if (m_front)
        return m_front->missingBytes();
    return std::max<qsizetype>(m_receiveThreshold - m_input.size(), m_awaited);
}

QByteArray SerialPort::read()
{
    const qsizetype count =
        m_readLength > 0 ? std::min<qsizetype>(m_readLength, m_input.size()) : m_input.size();
    QByteArray bytes(m_input.constData(), count);
    wipeFront(m_input, count);
    return bytes;
}

void SerialPort::clearInput()
{
    m_awaited = 0;
    wipe(m_input);
}

void SerialPort::deliver(QByteArray bytes)
{
    if (m_front)
        return m_front->deliver(std::move(bytes));
    if (bytes.isEmpty() || !isOpen())
        return;
    m_input.append(bytes.constData(), bytes.size());
    wipe(bytes);
    if (m_input.size() > inputCapacity)
        wipeFront(m_input, m_input.size() - inputCapacity);
    if (m_receiveThreshold > 0 && m_input.size() >= m_receiveThreshold)
        emit received();
}

void SerialPort::deviceGone()
{
    if (m_front)
        return m_front->deviceGone();
    if (!isOpen())
        return;
    closeDevice();
    wipe(m_input);
    emit lost();
}
