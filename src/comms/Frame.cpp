#include "Frame.h"

#include "modVBINUTIL.h"

#include <algorithm>

namespace frame {

namespace {

/// What tells the two start bytes apart.
constexpr quint8 startMask = 0xDF;
constexpr int envelopeAfterStart = 7;
/// With no data: the header, the code, the checksum and the end byte.
constexpr int shortestFrame = 8;

} // namespace

quint8 checksum(quint8 station, quint8 code, const QByteArray& data)
{
    quint8 sum = modVBINUTIL::NOVF_Add8(station, code);
    for (const char byte : data)
        sum = modVBINUTIL::NOVF_Add8(sum, static_cast<quint8>(byte));
    return sum;
}

Encoded encode(quint8 station, quint8 code, const QByteArray& data)
{
    const qsizetype length = data.size() + 2;
    const char start = static_cast<char>(length < 256 ? shortStart : longStart);
    const char lengthByte = static_cast<char>(length & 0xFF);

    QByteArray rest;
    rest.reserve(data.size() + envelopeAfterStart);
    rest.append(lengthByte).append(lengthByte).append(start);
    rest.append(static_cast<char>(station)).append(static_cast<char>(code));
    rest.append(data);
    rest.append(static_cast<char>(checksum(station, code, data))).append(static_cast<char>(end));
    return {QByteArray(1, start), rest};
}

QByteArray Header::bytes() const
{
    const char start = static_cast<char>(length < 256 ? shortStart : longStart);
    const char lengthByte = static_cast<char>(length & 0xFF);
    return QByteArray()
        .append(start)
        .append(2, lengthByte)
        .append(start)
        .append(static_cast<char>(station));
}

std::optional<Header> HeaderHunter::take(quint8 byte)
{
    std::shift_left(m_window.begin(), m_window.end(), 1);
    m_window.back() = byte;

    const auto [start, length, lengthAgain, startAgain, station] = m_window;
    if (start != startAgain || (start & startMask) != longStart || length != lengthAgain)
        return std::nullopt;
    if (start == shortStart && length < 2)
        return std::nullopt;
    if (station != m_station && m_station != anyStation)
        return std::nullopt;
    return Header{station, start == longStart ? 256 + length : length};
}

int HeaderHunter::bytesToCome() const
{
    const auto isStart = [](quint8 byte) { return (byte & startMask) == longStart; };
    const auto& [gone, first, second, third, last] = m_window;
    if (isStart(first) && second == third && last == first)
        return shortestFrame - 4;
    if (isStart(second) && third == last)
        return shortestFrame - 3;
    if (isStart(third))
        return shortestFrame - 2;
    return isStart(last) ? shortestFrame - 1 : shortestFrame;
}

} // namespace frame
