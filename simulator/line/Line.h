#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

class QSocketNotifier;

namespace simulator {

/// The clock's end of the line: one file descriptor.
class Line : public QObject {
    Q_OBJECT

public:
    ~Line() override;

    /// Opens the line. The reason of a failure; empty after success.
    virtual QString open() = 0;
    /// Removes the line. The program sees its device vanish.
    virtual void close();
    bool isOpen() const { return m_descriptor >= 0; }
    /// The device for the program to open; empty while closed.
    QString devicePath() const { return m_devicePath; }

    /// Writes at once. Bytes that do not fit in the system's buffer are lost, as on a real line.
    void write(const QByteArray& bytes);
    /// Whether all that was written has been read, or has left this machine.
    virtual bool hasDelivered() const = 0;

signals:
    void bytesArrived(const QByteArray& bytes);
    /// The device failed or was unplugged; the line is closed.
    void lost();
    /// The program closed its end, as far as the line can tell.
    void farEndClosed();

protected:
    explicit Line(QObject* parent) : QObject(parent) {}
    void adopt(int descriptor, const QString& devicePath);
    int descriptor() const { return m_descriptor; }
    /// Called before bytes are read, to notice events that happened before they arrived.
    virtual void beforeReading() {}

private:
    void readPending();

    int m_descriptor = -1;
    QString m_devicePath;
    QSocketNotifier* m_notifier = nullptr;
};

} // namespace simulator
