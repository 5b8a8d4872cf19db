#pragma once

#include "LineSettings.h"
#include "PortNames.h"
#include "SerialPort.h"

#include <QSerialPort>
#include <QTimer>

/// A port of this machine. Its device is looked up anew each time it opens, and is then this
/// program's alone. A device that vanishes, or fails in any other way while it is open, closes it.
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
    void bytesArrived();
    void takeArrived();
    /// Most of an answer's bytes are a while away when its header is there. Until the last are due
    /// the device is not watched, which would wake the program for each single byte.
    void restWhileBytesAreOnTheWay();
    void endRest();
    void setReading(bool on);
    void deviceFailed(QSerialPort::SerialPortError error);
    /// What the system says of the device. A read that finds nothing is no failure by itself.
    bool isDeviceGone() const;
    QString openFailure(const QString& path) const;
    /// Sets the parameters on the open device; in Spanish what it refuses.
    QString applySettings(const LineSettings& settings);

    const PortNames& m_names;
    QSerialPort m_port;
    QString m_device;
    /// While it is opened, closed or written to, an error does not mean that the device is gone.
    bool m_settled = false;
    /// A call of takeArrived is under way.
    bool m_taking = false;
    double m_millisecondsPerByte = 0;
    QTimer m_rest;
};
