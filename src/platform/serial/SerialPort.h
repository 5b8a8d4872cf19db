#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <chrono>

/// A numbered serial port (COM1, COM2…) with a settings text, the lines DTR and RTS, an input
/// buffer, and an event when enough bytes have been received. Derived classes supply the device.
///
/// Errors are no exceptions: after `open`, `isOpen` says whether it succeeded and `openError` why
/// not.
class SerialPort : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~SerialPort() override;

    /// 1 for COM1. Change number and settings only while the port is closed.
    void setPortNumber(int number) { m_portNumber = number; }
    int portNumber() const { return m_portNumber; }

    /// Speed in bit/s, parity letter (N E O M S), data bits (4 to 8), stop bits (1, 1.5, 2),
    /// separated by commas: "9600,N,8,1". `open` fails when the device does not support them.
    void setSettings(const QString& settings) { m_settings = settings; }
    const QString& settings() const { return m_settings; }

    /// DTR and RTS. They change at once on an open port, otherwise when it opens.
    void setDtrEnabled(bool on);
    bool isDtrEnabled() const { return m_dtr; }
    void setRtsEnabled(bool on);
    bool isRtsEnabled() const { return m_rts; }

    void open();
    /// Also ends an `open` that waits; the port is not open then, and there is no openError.
    void close();
    virtual bool isOpen() const = 0;
    /// Whether `open` waits for the far end of a network. Events run meanwhile, and a second `open`
    /// does nothing.
    bool isOpening() const { return m_opening; }

    /// The device for the number, for example "/dev/ttyUSB0"; empty when there is none.
    virtual QString deviceName() const = 0;
    /// How much later than over a cable an answer may come.
    virtual std::chrono::milliseconds answerAllowance() const { return {}; }
    /// Why the last `open` failed, in Spanish; empty when it succeeded.
    const QString& openError() const { return m_openError; }

    /// `received` is emitted when at least this many bytes are in the input buffer; never with 0.
    void setReceiveThreshold(int bytes);
    int receiveThreshold() const { return m_receiveThreshold; }
    /// The reader needs at least so many more bytes before it can go on. `received` is emitted as
    /// before, but a port may leave bytes with the driver until the last of these is due on the
    /// line. A new threshold and `clearInput` end it.
    void awaitBytes(int bytes) { m_awaited = bytes; }
    /// How many bytes `read` takes; all of them with 0.
    void setReadLength(int bytes) { m_readLength = bytes; }

    qsizetype inputCount() const { return m_input.size(); }
    /// Removes bytes from the input buffer: the read length, or fewer when there are fewer.
    QByteArray read();
    /// Discards what was received and not read, here and in the driver.
    virtual void clearInput();
    /// Discards what was written and not sent yet.
    virtual void clearOutput() = 0;
    /// Gives the bytes to the driver before it returns. What the driver does not take now is sent
    /// later. Does nothing on a closed port.
    virtual void write(const QByteArray& bytes) = 0;

    /// Makes this port the device of another, `front`: what is received and what becomes of the
    /// device goes there. Number, settings and lines remain those of this port.
    void standBehind(SerialPort& front) { m_front = &front; }

    /// Size of the input buffer in bytes. When more arrive, the oldest are dropped.
    static constexpr qsizetype inputCapacity = 65536;

signals:
    /// The receive event. Emitted at each arrival while the threshold is reached.
    void received();
    /// The device vanished while open. The port is closed when this is emitted.
    void lost();
    /// `isOpening` has changed.
    void openingChanged();

protected:
    /// Opens the device with the current number, settings and lines. The reason of a failure, in
    /// Spanish; empty after success.
    virtual QString openDevice() = 0;
    virtual void closeDevice() = 0;
    virtual void applyLines() = 0;
    /// `close` was called while isOpening: lets `openDevice` return.
    virtual void abandonOpening() {}
    /// For derived classes whose `openDevice` lets events run, around that.
    void setOpening(bool opening);

    /// At least so many bytes must still arrive before the reader can go on; below 1 when it waits
    /// for none in particular.
    qsizetype missingBytes() const;

    /// For derived classes: takes bytes that arrived. `bytes` is overwritten unless it is shared.
    void deliver(QByteArray bytes);
    /// For derived classes: the device is gone. Closes the port and emits `lost`.
    void deviceGone();

private:
    /// Null unless this port stands behind another.
    SerialPort* m_front = nullptr;
    bool m_opening = false;
    int m_portNumber = 1;
    QString m_settings = QStringLiteral("9600,N,8,1");
    bool m_dtr = false;
    bool m_rts = false;
    QString m_openError;
    int m_receiveThreshold = 0;
    int m_awaited = 0;
    int m_readLength = 0;
    /// Overwritten as it is read, because a modem echoes the codes of the SIM card.
    QByteArray m_input;
};
