#pragma once

#include "LineSettings.h"
#include "PortNames.h"
#include "SerialPort.h"

#include <QWinEventNotifier>

#include <memory>
#include <optional>
#include <vector>

/// A COM port of Windows, through the Win32 functions and not QSerialPort, whose buffers would keep
/// the codes of the SIM card. Every wait for a driver is bounded. An overlapped read of one byte
/// signals its event when something has arrived; the rest is then fetched. Writing does not wait
/// until the bytes are sent.
class Win32SerialPort final : public SerialPort {
    Q_OBJECT
public:
    explicit Win32SerialPort(const PortNames& names, QObject* parent = nullptr);
    ~Win32SerialPort() override;

    bool isOpen() const override { return m_handle != nullptr; }
    QString deviceName() const override;
    void clearInput() override;
    void clearOutput() override;
    void write(const QByteArray& bytes) override;

    /// How many bytes may wait to be sent. A write that exceeds it is dropped, as if the line were
    /// dead.
    static constexpr qsizetype outputCapacity = 65536;

protected:
    QString openDevice() override;
    void closeDevice() override;
    void applyLines() override;

private:
    struct Operation;

    QString configure(const LineSettings& settings);
    /// Begins to read the next byte; false when the device is gone.
    bool startRead();
    void readFinished();
    void handOverLater();
    void handOver();
    /// Appends what else has arrived; false when the device is gone.
    bool fetchWaiting(QByteArray& bytes);
    void reapWrites();

    const PortNames& m_names;
    /// A HANDLE; nullptr while closed.
    void* m_handle = nullptr;
    std::unique_ptr<Operation> m_read;
    /// From the beginning of that read until its result is taken.
    bool m_isReading = false;
    /// The result of the last read until it is handed over; nothing when the read failed.
    std::optional<QByteArray> m_arrived;
    int m_emptyReads = 0;
    std::unique_ptr<QWinEventNotifier> m_notifier;
    std::vector<std::unique_ptr<Operation>> m_writes;
};
