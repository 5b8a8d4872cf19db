#include "FrameReceiver.h"

#include <optional>

namespace simulator {

namespace {

constexpr qsizetype frameHeaderSize = 4;

/// L if the bytes so far may be the beginning of a frame; 0 while the length is not known yet.
std::optional<qsizetype> announcedLength(const QByteArray& buffer)
{
    const quint8 start = quint8(buffer[0]);
    if (start != 0x68 && start != 0x48)
        return std::nullopt;
    if (buffer.size() >= 3 && buffer[1] != buffer[2])
        return std::nullopt;
    if (buffer.size() >= frameHeaderSize && quint8(buffer[3]) != start)
        return std::nullopt;
    if (buffer.size() < frameHeaderSize)
        return 0;
    const qsizetype length = quint8(buffer[1]) + (start == 0x48 ? 256 : 0);
    if (length < 2)
        return std::nullopt;
    return length;
}

} // namespace

QList<WireFrame> FrameReceiver::take(const QByteArray& bytes)
{
    QList<WireFrame> frames;
    for (const char byte : bytes) {
        m_buffer.append(byte);
        frames += search();
    }
    return frames;
}

QList<WireFrame> FrameReceiver::takeSilence()
{
    QList<WireFrame> frames;
    while (!m_buffer.isEmpty()) {
        m_buffer.remove(0, 1);
        frames += search();
    }
    return frames;
}

QList<WireFrame> FrameReceiver::search()
{
    QList<WireFrame> frames;
    while (!m_buffer.isEmpty()) {
        const std::optional<qsizetype> length = announcedLength(m_buffer);
        if (!length) {
            m_buffer.remove(0, 1);
            continue;
        }
        const qsizetype whole = frameHeaderSize + *length + 2;
        if (*length == 0 || m_buffer.size() < whole)
            break;
        const WireFrame frame{quint8(m_buffer[4]), quint8(m_buffer[5]),
                              m_buffer.mid(frameHeaderSize + 2, *length - 2)};
        if (quint8(m_buffer[whole - 2]) != frame.checksum() || m_buffer[whole - 1] != '\x16') {
            ++m_damaged;
            m_buffer.remove(0, 1);
            continue;
        }
        m_buffer.remove(0, whole);
        if (frame.station == m_station || frame.station == anyStation)
            frames += frame;
        else
            ++m_foreign;
    }
    return frames;
}

} // namespace simulator
