#pragma once

#include <QByteArray>
#include <QString>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

/// A pair of pseudo-terminals: the port under test opens `device`, the test uses the other end.
class PseudoTerminal {
public:
    PseudoTerminal()
    {
        char name[128] = {};
        if (::openpty(&m_master, &m_slave, name, nullptr, nullptr) == 0) {
            device = QString::fromLatin1(name);
            ::fcntl(m_master, F_SETFL, O_NONBLOCK);
        }
    }
    ~PseudoTerminal()
    {
        vanish();
        ::close(m_slave);
    }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    QString device;

    /// Whether the descriptor is one of the test's own.
    bool uses(int descriptor) const { return descriptor == m_master || descriptor == m_slave; }
    /// The test's end; below 0 when it has vanished.
    int farEnd() const { return m_master; }
    /// The end for the process under test.
    int nearEnd() const { return m_slave; }
    bool send(const QByteArray& bytes)
    {
        return ::write(m_master, bytes.constData(), static_cast<size_t>(bytes.size())) ==
               bytes.size();
    }
    /// What the port has written so far, without waiting.
    QByteArray received()
    {
        QByteArray all;
        char buffer[4096];
        for (ssize_t count = 0; (count = ::read(m_master, buffer, sizeof buffer)) > 0;)
            all.append(buffer, count);
        return all;
    }
    /// Blocks until so many bytes are in the port's driver.
    bool waitUntilWithDriver(int bytes)
    {
        for (int attempt = 0; attempt < 5000; ++attempt) {
            int count = 0;
            if (::ioctl(m_slave, FIONREAD, &count) == 0 && count >= bytes)
                return true;
            ::usleep(1000);
        }
        return false;
    }
    /// Removes from the port's driver what the port has not read.
    void discardWithDriver() { ::tcflush(m_slave, TCIFLUSH); }
    /// What the port made its driver discard since the last call: TIOCPKT_FLUSHREAD for received
    /// bytes, TIOCPKT_FLUSHWRITE for bytes to send. Reads no bytes.
    int takeFlushes()
    {
        int on = 1;
        ::ioctl(m_master, TIOCPKT, &on);
        int flushes = 0;
        char packet[4096];
        while (::read(m_master, packet, sizeof packet) > 0)
            flushes |= packet[0] & (TIOCPKT_FLUSHREAD | TIOCPKT_FLUSHWRITE);
        return flushes;
    }
    void vanish()
    {
        if (m_master >= 0)
            ::close(m_master);
        m_master = -1;
    }

private:
    int m_master = -1;
    int m_slave = -1;
};
