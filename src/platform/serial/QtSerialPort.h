#pragma once

#include "LineSettings.h"
#include "PortNames.h"
#include "SerialPort.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QSocketNotifier>
#include <QTimer>

/// A serial port of a Unix system. It looks its device up at each opening and locks it against
/// other programs. When the device vanishes or fails for good, the port closes.
///
/// QSerialPort only opens and configures the device. Bytes are read and written directly: its
/// buffers would keep copies of them, the codes of the SIM card among them.
class QtSerialPort final : public SerialPort {
    Q_OBJECT
public:
    explicit QtSerialPort(const PortNames& names, QObject* parent = nullptr);
    ~QtSerialPort() override;

    bool isOpen() const override { return m_port.isOpen(); }
    QString deviceName() const override;
    void clearInput() override;
    void clearOutput() override;
    void write(const QByteArray& bytes) override;

protected:
    QString openDevice() override;
    void closeDevice() override;
    void applyLines() override;

private:
    /// Takes the device's notifications over from QSerialPort.
    void watchDevice();
    QSocketNotifier* makeNotifier(QSocketNotifier::Type type, void (QtSerialPort::*activated)());
    void readArrived();
    void writeWaiting();
    struct Written {
        qsizetype count;
        bool hasFailed;
    };
    /// Writes as much as the driver takes now.
    Written writeToDriver(const QByteArray& bytes);
    /// Most of an answer is still on the line when its first bytes are read. Does not watch the
    /// device until the last bytes are due, so that single bytes do not wake the program.
    void restWhileBytesAreOnTheWay();
    void endRest();
    /// Notes whether bytes come faster than the line's speed allows. Then nobody knows when those
    /// on the way are due.
    void measureSpeed(qsizetype count);
    /// Asks the system. A read that finds nothing is no failure: the bytes may have been discarded
    /// after their announcement.
    bool isDeviceGone() const;
    QString openFailure(const QString& path) const;
    /// Sets the parameters of the open device; what it refuses, in Spanish.
    QString applySettings(const LineSettings& settings);

    const PortNames& m_names;
    QSerialPort m_port;
    QString m_device;
    /// Null while the port is closed.
    QSocketNotifier* m_readable = nullptr;
    QSocketNotifier* m_writable = nullptr;
    /// Bytes that the driver has not taken yet because its buffer was full.
    QByteArray m_waiting;
    double m_millisecondsPerByte = 0;
    /// Since the last writing, and the bytes received since then.
    QElapsedTimer m_sinceWriting;
    qsizetype m_receivedSinceWriting = 0;
    bool m_isFasterThanItsSpeed = false;
    QTimer m_rest{this};
};
