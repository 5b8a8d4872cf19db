// Passes the bytes of one TCP connection on to a port of this machine and back, late, as a slow
// network does. Its first line on standard output is the port to connect to.
//   network-relay PORT DELAY JITTER
// Each piece is passed on after DELAY milliseconds, JITTER per cent more or less, in its order. A
// piece that would overtake another waits for it. The end of a connection is passed on at once, so
// that who connects next finds the port free.

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QHostAddress>
#include <QQueue>
#include <QRandomGenerator>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace {

/// In milliseconds.
struct Delay {
    int mean;
    int jitter;

    int next() const { return mean + QRandomGenerator::global()->bounded(-jitter, jitter + 1); }
};

/// One direction of a connection.
class DelayedWay : public QObject {
public:
    DelayedWay(QTcpSocket& from, QTcpSocket& to, Delay delay)
        : QObject(&from), m_from(from), m_to(to), m_delay(delay)
    {
        connect(&m_from, &QTcpSocket::readyRead, this, [this] { take(m_from.readAll()); });
        connect(&m_from, &QTcpSocket::disconnected, &m_to, &QTcpSocket::disconnectFromHost);
    }

private:
    void take(const QByteArray& bytes)
    {
        const qint64 now = QDeadlineTimer::current(Qt::PreciseTimer).deadline();
        m_lastDue = std::max(m_lastDue, now + m_delay.next());
        m_waiting.enqueue(bytes);
        QTimer::singleShot(static_cast<int>(m_lastDue - now), Qt::PreciseTimer, this,
                           [this] { m_to.write(m_waiting.dequeue()); });
    }

    QTcpSocket& m_from;
    QTcpSocket& m_to;
    const Delay m_delay;
    QQueue<QByteArray> m_waiting;
    /// When the piece before is passed on, as the system's clock has it.
    qint64 m_lastDue = 0;
};

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const quint16 port = arguments.value(1).toUShort();
    const int mean = arguments.value(2).toInt();
    const Delay delay{mean, mean * arguments.value(3).toInt() / 100};
    QTcpServer server;
    if (port == 0 || !server.listen(QHostAddress::LocalHost)) {
        std::fprintf(stderr, "usage: network-relay PORT DELAY JITTER\n");
        return 2;
    }
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&server, port, delay] {
        QTcpSocket& near = *server.nextPendingConnection();
        auto& far = *new QTcpSocket(&server);
        for (QTcpSocket* socket : {&near, &far})
            socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        far.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
        new DelayedWay(near, far, delay);
        new DelayedWay(far, near, delay);
    });
    std::printf("%d\n", server.serverPort());
    std::fflush(stdout);
    return QCoreApplication::exec();
}
