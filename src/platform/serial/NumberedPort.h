#pragma once

#include "PortNames.h"
#include "SerialPort.h"

#include <functional>
#include <memory>

/// The port with a COM number, whatever it is: its device is looked up at each opening, and decides
/// which class of port stands behind this one.
class NumberedPort final : public SerialPort {
    Q_OBJECT
public:
    /// Makes the port for the device that is named for the number; for an empty text when none is.
    using Factory = std::function<std::unique_ptr<SerialPort>(const QString& namedDevice)>;

    NumberedPort(const PortNames& names, Factory makePort, QObject* parent = nullptr);
    ~NumberedPort() override;

    bool isOpen() const override { return m_port && m_port->isOpen(); }
    QString deviceName() const override;
    std::chrono::milliseconds answerAllowance() const override;
    void clearInput() override;
    void clearOutput() override;
    void write(const QByteArray& bytes) override;

protected:
    QString openDevice() override;
    void closeDevice() override { m_port->close(); }
    void applyLines() override;
    void abandonOpening() override { m_port->close(); }

private:
    const PortNames& m_names;
    const Factory m_makePort;
    /// That of the last opening.
    std::unique_ptr<SerialPort> m_port;
};
