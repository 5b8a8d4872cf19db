#include "ComPortCommands.h"

#include "Telnet.h"

#include <QtEndian>

namespace {

/// Values of SetControl.
constexpr char noFlowControl = 1;
constexpr char dtrOn = 8;
constexpr char dtrOff = 9;
constexpr char rtsOn = 11;
constexpr char rtsOff = 12;

/// Values of Purge.
constexpr char receivedFromTheLine = 1;
constexpr char toSendToTheLine = 2;

char parityNumber(char letter)
{
    switch (letter) {
    case 'O': return 2;
    case 'E': return 3;
    case 'M': return 4;
    case 'S': return 5;
    default: return 1;
    }
}

char stopNumber(LineSettings::Stop stop)
{
    switch (stop) {
    case LineSettings::Stop::One: break;
    case LineSettings::Stop::Two: return 2;
    case LineSettings::Stop::OneAndHalf: return 3;
    }
    return 1;
}

} // namespace

QByteArray comport::escaped(const QByteArray& data)
{
    constexpr char iac = static_cast<char>(telnet::IAC);
    QByteArray bytes;
    // Its final size: growing would leave copies of the data in memory.
    bytes.reserve(data.size() + data.count(iac));
    for (const char byte : data) {
        bytes.append(byte);
        if (byte == iac)
            bytes.append(iac);
    }
    return bytes;
}

QByteArray comport::command(Code code, const QByteArray& value)
{
    QByteArray bytes;
    for (const quint8 byte : {telnet::IAC, telnet::SB, telnet::ComPort, quint8{code}})
        bytes.append(static_cast<char>(byte));
    bytes.append(escaped(value));
    for (const quint8 byte : {telnet::IAC, telnet::SE})
        bytes.append(static_cast<char>(byte));
    return bytes;
}

QByteArray comport::speedValue(const LineSettings& settings)
{
    QByteArray value(sizeof(quint32), '\0');
    qToBigEndian(static_cast<quint32>(settings.speed), value.data());
    return value;
}

QByteArray comport::dataSizeValue(const LineSettings& settings)
{
    return QByteArray(1, static_cast<char>(settings.dataBits));
}

QByteArray comport::parityValue(const LineSettings& settings)
{
    return QByteArray(1, parityNumber(settings.parity));
}

QByteArray comport::stopSizeValue(const LineSettings& settings)
{
    return QByteArray(1, stopNumber(settings.stop));
}

QByteArray comport::setLine(const LineSettings& settings)
{
    return command(SetSpeed, speedValue(settings)) + command(SetDataSize, dataSizeValue(settings)) +
           command(SetParity, parityValue(settings)) +
           command(SetStopSize, stopSizeValue(settings)) +
           command(SetControl, QByteArray(1, noFlowControl));
}

QByteArray comport::setDtrAndRts(bool dtr, bool rts)
{
    return command(SetControl, QByteArray(1, dtr ? dtrOn : dtrOff)) +
           command(SetControl, QByteArray(1, rts ? rtsOn : rtsOff));
}

QByteArray comport::purgeReceived() { return command(Purge, QByteArray(1, receivedFromTheLine)); }

QByteArray comport::purgeToSend() { return command(Purge, QByteArray(1, toSendToTheLine)); }
