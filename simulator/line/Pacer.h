#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>

#include <chrono>
#include <functional>

class QSocketNotifier;

namespace simulator {

/// Bytes and the time at which they are sent, by the monotonic clock.
struct Departure {
    std::chrono::nanoseconds at;
    QByteArray bytes;
};

/// The times at which the bytes of a message have passed a line of `rate` bit/s, with 10 bits a
/// byte: the n-th byte n byte times after the start, without accumulated error. With a `burst`
/// above 1, that many bytes are sent together when the last of them has passed, as from the buffer
/// of a converter. With rate 0 all are sent at the start.
QList<Departure> departures(std::chrono::nanoseconds start, const QByteArray& bytes, int rate,
                            int burst);

/// Sends bytes at the rate of a real line, at absolute times. Requests count as arriving at that
/// rate too: an answer starts when the last byte of the request has passed the line.
class Pacer : public QObject {
    Q_OBJECT

public:
    using Write = std::function<void(const QByteArray&)>;

    explicit Pacer(Write write, QObject* parent = nullptr);
    ~Pacer() override;

    /// In bit/s; 0 is as fast as possible.
    void setRate(int rate) { m_rate = rate; }
    int rate() const { return m_rate; }
    /// How many bytes are sent together, at least 1.
    void setBurst(int bytes) { m_burst = bytes; }

    /// Call when `count` bytes of a request have been read.
    void received(qsizetype count);
    /// Sends bytes after all that are waiting, and not before `delay` has passed. With a `byteGap`
    /// above 0 that time comes before each byte, whatever the rate. When more than 64 KiB would
    /// wait, the message is dropped.
    void send(const QByteArray& bytes, std::chrono::microseconds delay = {},
              std::chrono::milliseconds byteGap = {});
    /// Whether no bytes wait.
    bool isIdle() const { return m_waiting.isEmpty(); }
    /// Drops the bytes that wait.
    void clear();

private:
    void writeDue();
    void arm();

    Write m_write;
    int m_rate = 0;
    int m_burst = 1;
    int m_timer = -1;
    QSocketNotifier* m_notifier = nullptr;
    std::chrono::nanoseconds m_receptionEnd{0};
    std::chrono::nanoseconds m_sendingEnd{0};
    QList<Departure> m_waiting;
    qsizetype m_waitingBytes = 0;
};

} // namespace simulator
