#pragma once

#include "LineSettings.h"
#include "PortNames.h"
#include "SerialPort.h"

#include <QSerialPort>
#include <QSocketNotifier>
#include <QTimer>

/// A port of this machine. Its device is looked up anew each time it opens, and is then this
/// program's alone. A device that vanishes while it is open closes it.
///
/// The toolkit's port opens and sets up the device. Bytes pass it by: its buffers would keep what
/// went through them, the codes of the SIM card included.
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
    QSocketNotifier* makeNotifier(QSocketNotifier::Type type, void (QtSerialPort::*activated)());
    void readArrived();
    void writeWaiting();
    /// How many of the bytes the driver takes now.
    qsizetype writeToDriver(const QByteArray& bytes);
    /// Most of an answer's bytes are a while away when its header is there. Until the last are due
    /// the device is not watched, which would wake the program for each single byte.
    void restWhileBytesAreOnTheWay();
    void endRest();
    /// What the system says of the device: a read that finds nothing is no failure by itself.
    bool isDeviceGone() const;
    QString openFailure(const QString& path) const;
    /// Sets the parameters on the open device; in Spanish what it refuses.
    QString applySettings(const LineSettings& settings);

    const PortNames& m_names;
    QSerialPort m_port;
    QString m_device;
    /// These are there while the port is open.
    QSocketNotifier* m_readable = nullptr;
    QSocketNotifier* m_writable = nullptr;
    /// What a full driver has not taken yet.
    QByteArray m_waiting;
    double m_millisecondsPerByte = 0;
    QTimer m_rest;
};
