#pragma once

#include "Processes.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QStringList>

#include <array>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

/// The simulator as a process, its commands, and the program's end of its line.
class SimulatorProcess {
public:
    explicit SimulatorProcess(const QStringList& arguments = {})
    {
        process.start(QStringLiteral(HCT_SIMULATOR), arguments);
        device = readLine();
        openDevice();
    }
    ~SimulatorProcess()
    {
        closeDevice();
        process.closeWriteChannel();
        if (!hasEnded(process))
            process.kill();
    }
    SimulatorProcess(const SimulatorProcess&) = delete;
    SimulatorProcess& operator=(const SimulatorProcess&) = delete;

    QProcess process;
    QString device;

    /// The next line of standard output without its end; empty when none comes for long.
    QString readLine() { return readLineOf(process); }
    /// Runs a command; its lines, the last of which is "ok" or an error.
    QStringList command(const QString& text)
    {
        process.write(text.toUtf8() + '\n');
        QStringList lines;
        do
            lines += readLine();
        while (!lines.last().isEmpty() && lines.last() != QLatin1String("ok") &&
               !lines.last().startsWith(QLatin1String("error: ")));
        return lines;
    }
    /// The value of a key in the answer to "state".
    QString state(const QString& key)
    {
        for (const QString& line : command(QStringLiteral("state"))) {
            if (line.startsWith(key + u'='))
                return line.mid(key.size() + 1);
        }
        return {};
    }

    bool openDevice()
    {
        m_descriptor =
            ::open(device.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        return m_descriptor >= 0;
    }
    void closeDevice()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        m_descriptor = -1;
    }
    void write(const QByteArray& bytes)
    {
        [[maybe_unused]] const ssize_t written =
            ::write(m_descriptor, bytes.constData(), size_t(bytes.size()));
    }
    /// What arrives until there are so many bytes, or until the line has been gone or silent for so
    /// long.
    QByteArray read(qsizetype count, int milliseconds = processPatience)
    {
        QByteArray bytes;
        pollfd ready{m_descriptor, POLLIN, 0};
        while (bytes.size() < count && ::poll(&ready, 1, milliseconds) > 0) {
            std::array<char, 4096> buffer;
            const ssize_t got = ::read(m_descriptor, buffer.data(), buffer.size());
            if (got <= 0)
                break;
            bytes.append(buffer.data(), got);
        }
        return bytes;
    }
    /// Sends a request and reads so many bytes; both in hexadecimal.
    QByteArray exchange(const char* request, qsizetype count, int milliseconds = processPatience)
    {
        write(QByteArray::fromHex(request));
        return read(count, milliseconds).toHex();
    }

private:
    int m_descriptor = -1;
};
