#pragma once

#include "WireFrame.h"

#include <QList>

namespace simulator {

/// Finds requests in what the line delivers, whatever the chunks and whatever noise precedes them.
/// A frame with a wrong checksum or end byte is no frame: the search goes on one byte behind its
/// start, so that a good frame inside it is found. Holds at most one frame (517 bytes).
class FrameReceiver {
public:
    /// Address under which every clock listens.
    static constexpr quint8 anyStation = 255;

    explicit FrameReceiver(quint8 station) : m_station(station) {}

    /// The good frames for this station that the bytes completed; others are passed over.
    QList<WireFrame> take(const QByteArray& bytes);
    /// The line has been silent for longer than any frame may pause: what is begun was noise.
    QList<WireFrame> takeSilence();
    /// Forgets what is begun.
    void clear() { m_buffer.clear(); }
    /// Whether bytes are held that may become a frame.
    bool hasBegun() const { return !m_buffer.isEmpty(); }
    /// Frames dropped so far for their checksum or end byte.
    int damagedFrames() const { return m_damaged; }
    int foreignFrames() const { return m_foreign; }

private:
    QList<WireFrame> search();

    quint8 m_station;
    QByteArray m_buffer;
    int m_damaged = 0;
    int m_foreign = 0;
};

} // namespace simulator
