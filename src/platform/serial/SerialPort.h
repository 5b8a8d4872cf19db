#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

/// A numbered serial port: COM1, COM2… with a settings text, two lines held on or off, an input
/// buffer, and an event for a number of bytes received. Concrete ports supply the device; the
/// buffer and the threshold are here, alike for all.
///
/// Nothing here reports by exception or box: whether `open` succeeded is what `isOpen` says
/// afterwards, and `openError` tells why not.
class SerialPort : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// 1 for COM1. Number and settings are changed while the port is closed.
    void setPortNumber(int number) { m_portNumber = number; }
    int portNumber() const { return m_portNumber; }

    /// Speed, parity letter (N E O M S), data bits (4 to 8), stop bits (1, 1.5, 2), joined by
    /// commas: "9600,N,8,1". What the device refuses makes `open` fail.
    void setSettings(const QString& settings) { m_settings = settings; }
    const QString& settings() const { return m_settings; }

    /// The lines. On an open port they change at once, else when it opens.
    void setDtrEnabled(bool on);
    bool isDtrEnabled() const { return m_dtr; }
    void setRtsEnabled(bool on);
    bool isRtsEnabled() const { return m_rts; }

    void open();
    void close();
    virtual bool isOpen() const = 0;

    /// The device behind the number, for example "/dev/ttyUSB0"; empty when there is none.
    virtual QString deviceName() const = 0;
    /// Why the last `open` failed, in Spanish; empty after a good one.
    const QString& openError() const { return m_openError; }

    /// `received` is emitted when this many bytes are in the input buffer; 0 keeps it silent.
    void setReceiveThreshold(int bytes) { m_receiveThreshold = bytes; }
    int receiveThreshold() const { return m_receiveThreshold; }
    /// How many bytes `read` takes; 0 takes all there are.
    void setReadLength(int bytes) { m_readLength = bytes; }

    qsizetype inputCount() const { return m_input.size(); }
    /// Up to the read length; fewer (or none) when the buffer holds fewer.
    QByteArray read();
    virtual void clearInput();
    virtual void clearOutput() = 0;
    /// Hands the bytes to the device before it returns, as far as the device takes them.
    virtual void write(const QByteArray& bytes) = 0;

    /// The bytes kept while nobody reads: when more arrive, the oldest are dropped.
    static constexpr qsizetype inputCapacity = 65536;

signals:
    /// The receive event. Emitted again for each further arrival while the threshold is reached.
    void received();
    /// The device vanished while open. The port is closed when this is emitted.
    void lost();

protected:
    /// Opens the device with the current number, settings and lines; the reason when it cannot.
    virtual QString openDevice() = 0;
    virtual void closeDevice() = 0;
    virtual void applyLines() = 0;

    /// The concrete port hands over what arrived. `bytes` is overwritten unless it is shared.
    void deliver(QByteArray bytes);
    /// The concrete port found its device gone: closes it and emits `lost`.
    void deviceGone();

private:
    int m_portNumber = 1;
    QString m_settings = QStringLiteral("9600,N,8,1");
    bool m_dtr = false;
    bool m_rts = false;
    QString m_openError;
    int m_receiveThreshold = 0;
    int m_readLength = 0;
    /// Overwritten as it is read: a modem echoes the codes of the SIM card.
    QByteArray m_input;
};
