#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>

#include <chrono>
#include <functional>

class QSocketNotifier;

namespace simulator {

/// Bytes and the moment at which they leave.
struct Departure {
    std::chrono::nanoseconds at;
    QByteArray bytes;
};

/// When each byte of a message has passed a line of that rate, 10 bits a byte: the n-th byte n
/// byte times after the start, without any error that adds up. With a burst above 1 that many
/// bytes leave together when the last of them has passed, as out of a converter's buffer. A rate
/// of 0 lets all leave at the start.
QList<Departure> departures(std::chrono::nanoseconds start, const QByteArray& bytes, int rate,
                            int burst);

/// Lets bytes leave as slowly as a line of a given rate carries them, on a schedule of absolute
/// moments. Requests are thought to arrive at that rate too: an answer starts when the request's
/// last byte has passed the line.
class Pacer : public QObject {
    Q_OBJECT

public:
    using Write = std::function<void(const QByteArray&)>;

    explicit Pacer(Write write, QObject* parent = nullptr);
    ~Pacer() override;

    /// In bit/s; 0 is as fast as can be.
    void setRate(int rate) { m_rate = rate; }
    int rate() const { return m_rate; }
    void setBurst(int bytes) { m_burst = bytes; }

    /// So many bytes of a request have just been read.
    void received(qsizetype count);
    /// Lets bytes leave behind all that waits already, and not before the delay is over. A gap
    /// above 0 puts so much time before each byte, whatever the rate. Beyond 64 KiB that wait, a
    /// message is dropped.
    void send(const QByteArray& bytes, std::chrono::microseconds delay = {},
              std::chrono::milliseconds byteGap = {});
    /// Forgets what waits.
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
