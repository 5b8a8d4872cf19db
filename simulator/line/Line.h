#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

class QSocketNotifier;

namespace simulator {

/// The line on which the clock listens and answers, behind one file descriptor.
class Line : public QObject {
    Q_OBJECT

public:
    ~Line() override;

    /// Opens the line; the reason of a failure, empty after success.
    virtual QString open() = 0;
    /// Takes the line away; the program at the other end sees it vanish.
    virtual void close();
    bool isOpen() const { return m_descriptor >= 0; }
    /// The device that the program is to open; empty while closed.
    QString devicePath() const { return m_devicePath; }

    /// Writes at once. What the other end leaves unread beyond the system's buffer is lost, as on a
    /// wire.
    void write(const QByteArray& bytes);

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
    /// Called before bytes are read, for what happened on the line before they came.
    virtual void beforeReading() {}

private:
    void readPending();

    int m_descriptor = -1;
    QString m_devicePath;
    QSocketNotifier* m_notifier = nullptr;
};

} // namespace simulator
