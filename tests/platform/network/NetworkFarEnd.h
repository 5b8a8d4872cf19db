#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <memory>

/// The far end of a network, on this machine and in the same event loop. It answers a connection
/// with bytes that the test sets, and keeps what it receives.
class NetworkFarEnd : public QObject {
    Q_OBJECT
public:
    explicit NetworkFarEnd(const QHostAddress& address = QHostAddress::LocalHost)
    {
        m_server.listen(address);
        connect(&m_server, &QTcpServer::newConnection, this, &NetworkFarEnd::accept);
    }

    /// DO and WILL binary, DO COM port; then 9600 bit/s, 8 data bits, no parity and 1 stop bit are
    /// confirmed.
    static QByteArray agreement()
    {
        return QByteArray::fromHex("fffd00fffb00fffd2cfffa2c6500002580fff0fffa2c6608fff0"
                                   "fffa2c6701fff0fffa2c6801fff0");
    }
    /// What the port sends until it is open, with 9600,N,8,1 and DTR and RTS off.
    static QByteArray opening()
    {
        return QByteArray::fromHex("fffb00fffd00fffb03fffd03fffb2c"
                                   "fffa2c0100002580fff0fffa2c0208fff0fffa2c0301fff0"
                                   "fffa2c0401fff0fffa2c0501fff0fffa2c0509fff0fffa2c050cfff0");
    }

    /// What is sent as soon as somebody connects; then, if wanted, the connection is closed.
    QByteArray greeting;
    bool closesAfterGreeting = false;
    QByteArray received;
    int connections = 0;

    quint16 port() const { return m_server.serverPort(); }
    QString raw() const { return QStringLiteral("tcp://127.0.0.1:%1").arg(port()); }
    QString rfc2217() const { return QStringLiteral("rfc2217://127.0.0.1:%1").arg(port()); }
    /// Null until somebody has connected.
    QTcpSocket* connection() const { return m_connection.get(); }
    void send(const QByteArray& bytes) { m_connection->write(bytes); }
    void sendHex(const char* hexadecimal) { send(QByteArray::fromHex(hexadecimal)); }
    /// Closes the connection after all has been sent.
    void hangUp() { m_connection->disconnectFromHost(); }
    void stopListening() { m_server.close(); }
    /// Waits until it has received so many bytes.
    bool waitFor(qsizetype count)
    {
        return QTest::qWaitFor([&] { return received.size() >= count; }, 30000);
    }
    QByteArray takeReceived() { return std::exchange(received, {}); }

private:
    void accept()
    {
        ++connections;
        m_connection.reset(m_server.nextPendingConnection());
        m_connection->setParent(nullptr);
        QTcpSocket& connection = *m_connection;
        connect(&connection, &QTcpSocket::readyRead, this,
                [this] { received += m_connection->readAll(); });
        send(greeting);
        if (closesAfterGreeting)
            hangUp();
    }

    QTcpServer m_server;
    std::unique_ptr<QTcpSocket> m_connection;
};
