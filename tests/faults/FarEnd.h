#pragma once

#include "PseudoTerminal.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>

/// The clock's end of a pseudo-terminal: tells each whole request as it arrives.
class FarEnd : public QObject {
    Q_OBJECT
public:
    FarEnd() : m_readable(std::make_unique<QSocketNotifier>(m_line.farEnd(), QSocketNotifier::Read))
    {
        connect(m_readable.get(), &QSocketNotifier::activated, this, [this] { take(); });
    }

    QString device() const { return m_line.device; }
    void send(const QByteArray& bytes) { m_line.send(bytes); }
    /// The device of the port is gone.
    void vanish()
    {
        m_readable.reset();
        m_line.vanish();
    }

signals:
    void requested(const QByteArray& frame);

private:
    void take()
    {
        m_bytes += m_line.received();
        // Requests of fewer than 256 bytes.
        while (m_bytes.size() > 1 && m_bytes.size() >= m_bytes.at(1) + 6) {
            const QByteArray frame = m_bytes.left(m_bytes.at(1) + 6);
            m_bytes.remove(0, frame.size());
            emit requested(frame);
        }
    }

    PseudoTerminal m_line;
    std::unique_ptr<QSocketNotifier> m_readable;
    QByteArray m_bytes;
};
