#pragma once

#include <QByteArray>
#include <QObject>

class QSocketNotifier;

namespace simulator {

/// Reads lines from a file descriptor, such as standard input, without blocking. A line longer than
/// 4096 bytes is cut.
class CommandReader : public QObject {
    Q_OBJECT

public:
    explicit CommandReader(int descriptor, QObject* parent = nullptr);

signals:
    void lineRead(const QString& line);
    void ended();

private:
    void readPending();
    void take(char byte);
    void finishLine();

    int m_descriptor;
    QByteArray m_line;
    QSocketNotifier* m_notifier;
};

} // namespace simulator
