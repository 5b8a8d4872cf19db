#pragma once

#include "LineSettings.h"
#include "PortNames.h"
#include "SerialPort.h"

#include <QWinEventNotifier>

#include <memory>
#include <optional>
#include <vector>

/// A COM port of Windows, by the system's own calls. An overlapped read of one byte, watched by its
/// event, tells that something has come; what else is there is fetched with it. Writing never holds
/// the thread for the time on the wire.
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

    /// The bytes that may wait to be sent; more are dropped, as a line that takes nothing.
    static constexpr qsizetype outputCapacity = 65536;

protected:
    QString openDevice() override;
    void closeDevice() override;
    void applyLines() override;

private:
    struct Operation;

    QString configure(const LineSettings& settings);
    /// Begins the read of the next byte; a device that refuses it is gone.
    bool startRead();
    void readFinished();
    void handOverLater();
    void handOver();
    /// Adds what else is there; false when the device cannot tell.
    bool fetchWaiting(QByteArray& bytes);
    void reapWrites();

    const PortNames& m_names;
    /// A HANDLE; nullptr while closed.
    void* m_handle = nullptr;
    std::unique_ptr<Operation> m_read;
    /// Whether that read is under way, or over and not looked at yet.
    bool m_isReading = false;
    /// What the read before brought and nobody has seen yet; nothing when it failed.
    std::optional<QByteArray> m_arrived;
    int m_emptyReads = 0;
    std::unique_ptr<QWinEventNotifier> m_notifier;
    std::vector<std::unique_ptr<Operation>> m_writes;
};
