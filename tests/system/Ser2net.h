#pragma once

#include "Processes.h"

#include <QFile>
#include <QHostAddress>
#include <QTcpServer>
#include <QTemporaryDir>
#include <qtestsupport_core.h>

/// ser2net, which puts a serial device on the network, as a process of its own. It serves one
/// connection at a time.
class Ser2net {
public:
    enum class Protocol { Raw, Rfc2217 };

    Ser2net(const QString& device, Protocol protocol) : m_protocol(protocol), m_port(freePort())
    {
        QFile file(m_folder.filePath(QStringLiteral("ser2net.yaml")));
        const QString accepter =
            isRaw() ? QStringLiteral("tcp") : QStringLiteral("telnet(rfc2217),tcp");
        const QString text = QStringLiteral("%YAML 1.1\n"
                                            "---\n"
                                            "connection: &clock\n"
                                            "  accepter: %1,127.0.0.1,%2\n"
                                            "  connector: serialdev(nouucplock),%3,9600n81,local\n"
                                            "  options:\n"
                                            "    kickolduser: false\n")
                                 .arg(accepter)
                                 .arg(m_port)
                                 .arg(device);
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
            qFatal("cannot write the configuration of ser2net");
        file.close();
        start();
    }
    ~Ser2net() { kill(); }

    /// Where it is to be reached.
    QString address() const
    {
        return (isRaw() ? QStringLiteral("tcp://127.0.0.1:%1")
                        : QStringLiteral("rfc2217://127.0.0.1:%1"))
            .arg(m_port);
    }
    quint16 port() const { return m_port; }
    void start()
    {
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QStringLiteral("ser2net"),
                        {QStringLiteral("-n"), QStringLiteral("-c"),
                         m_folder.filePath(QStringLiteral("ser2net.yaml"))});
        if (!QTest::qWaitFor([this] { return isListening(); }, processPatience))
            qFatal("ser2net does not listen");
    }
    void kill()
    {
        m_process.kill();
        hasEnded(m_process);
    }

private:
    bool isRaw() const { return m_protocol == Protocol::Raw; }
    static quint16 freePort()
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        return server.serverPort();
    }
    /// Asks the system: a connection would be the one that is served.
    bool isListening() const
    {
        QFile sockets(QStringLiteral("/proc/net/tcp"));
        return sockets.open(QIODevice::ReadOnly) &&
               sockets.readAll().contains(QStringLiteral("0100007F:%1 00000000:0000 0A")
                                              .arg(m_port, 4, 16, QLatin1Char('0'))
                                              .toUpper()
                                              .toLatin1());
    }

    const Protocol m_protocol;
    const quint16 m_port;
    QTemporaryDir m_folder;
    QProcess m_process;
};

/// A network that is slow: its end near the test, and at the other end that of a server. A process
/// of its own.
class SlowNetwork {
public:
    /// Each way takes `delay` milliseconds, 5 % more or less.
    SlowNetwork(const QString& relay, const Ser2net& server, int delay) : m_server(server)
    {
        m_process.start(
            relay, {QString::number(server.port()), QString::number(delay), QStringLiteral("5")});
        m_port = readLineOf(m_process).toUShort();
        if (m_port == 0)
            qFatal("the relay did not start");
    }
    ~SlowNetwork()
    {
        m_process.kill();
        hasEnded(m_process);
    }
    QString address() const
    {
        return m_server.address().section(QLatin1Char(':'), 0, -2) + QLatin1Char(':') +
               QString::number(m_port);
    }

private:
    const Ser2net& m_server;
    QProcess m_process;
    quint16 m_port = 0;
};
