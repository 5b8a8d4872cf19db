#pragma once

#include "WireFrame.h"

#include <QList>

namespace simulator {

/// Finds requests in the received bytes, however they are divided and whatever noise precedes them.
/// A frame with a wrong checksum or end byte does not count: the search continues one byte after
/// its start, so that a good frame inside it is found. Stores one frame (517 bytes) at most.
class FrameReceiver {
public:
    /// The address to which every clock listens.
    static constexpr quint8 anyStation = 255;

    explicit FrameReceiver(quint8 station) : m_station(station) {}

    /// The good frames for this station that these bytes complete.
    QList<WireFrame> take(const QByteArray& bytes);
    /// Call when the line has been silent for longer than any pause inside a frame: an unfinished
    /// frame was noise.
    QList<WireFrame> takeSilence();
    /// Forgets an unfinished frame.
    void clear() { m_buffer.clear(); }
    /// Whether there are bytes that may become a frame.
    bool hasBegun() const { return !m_buffer.isEmpty(); }
    /// Frames dropped so far for their checksum or end byte.
    int damagedFrames() const { return m_damaged; }
    /// Good frames for other stations so far.
    int foreignFrames() const { return m_foreign; }

private:
    QList<WireFrame> search();

    quint8 m_station;
    QByteArray m_buffer;
    int m_damaged = 0;
    int m_foreign = 0;
};

} // namespace simulator
