#pragma once

#include "FakeClockOfDay.h"
#include "SerialPort.h"

#include <QList>

#include <functional>

/// A port without a device: it records every write with its time, and receives what the test gives
/// it.
class FakeSerialPort final : public SerialPort {
    Q_OBJECT
public:
    explicit FakeSerialPort(const FakeClockOfDay& clock, QObject* parent = nullptr)
        : SerialPort(parent), m_clock(clock)
    {}

    struct Write {
        QByteArray bytes;
        QTime time;
    };

    /// For the test to set and to read.
    QString refusal;
    QString device = QStringLiteral("/dev/fake");
    QList<Write> writes;
    QList<QByteArray> lineChanges;
    int timesOpened = 0;
    int timesClosed = 0;
    int outputClears = 0;
    std::chrono::milliseconds allowance{};
    /// Runs while the port waits for the far end of its network.
    std::function<void()> whileOpening;
    /// Runs when a write has reached the device, or has found it gone.
    std::function<void()> afterWrite;

    /// All bytes written, joined.
    QByteArray written() const
    {
        QByteArray all;
        for (const Write& write : writes)
            all += write.bytes;
        return all;
    }
    QByteArray takeWritten()
    {
        const QByteArray all = written();
        writes.clear();
        return all;
    }
    /// Bytes arrive from the line.
    void arrive(const QByteArray& bytes) { deliver(bytes); }
    /// The bytes arrive one by one.
    void arriveBytewise(const QByteArray& bytes)
    {
        for (const char byte : bytes)
            deliver(QByteArray(1, byte));
    }
    /// The device is unplugged.
    void vanish() { deviceGone(); }

    /// How many bytes the reader still waits for.
    qsizetype stillMissing() const { return missingBytes(); }

    bool isOpen() const override { return m_open; }
    QString deviceName() const override { return device; }
    std::chrono::milliseconds answerAllowance() const override { return allowance; }
    void clearOutput() override { ++outputClears; }
    void write(const QByteArray& bytes) override
    {
        writes.append({bytes, m_clock.now().time()});
        if (afterWrite)
            afterWrite();
    }

protected:
    QString openDevice() override
    {
        ++timesOpened;
        m_abandoned = false;
        if (whileOpening) {
            setOpening(true);
            whileOpening();
            setOpening(false);
        }
        m_open = refusal.isEmpty() && !m_abandoned;
        return m_abandoned ? QString() : refusal;
    }
    void abandonOpening() override { m_abandoned = true; }
    void closeDevice() override
    {
        ++timesClosed;
        m_open = false;
    }
    /// Recorded as "DTR=1 RTS=0".
    void applyLines() override
    {
        lineChanges.append(QByteArray("DTR=") + (isDtrEnabled() ? '1' : '0') +
                           " RTS=" + (isRtsEnabled() ? '1' : '0'));
    }

private:
    const FakeClockOfDay& m_clock;
    bool m_open = false;
    bool m_abandoned = false;
};
