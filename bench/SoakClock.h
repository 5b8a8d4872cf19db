#pragma once

#include "SimulatorChannel.h"

#include <QMap>
#include <QStringList>

/// The simulated clock as a process of its own on COM1, with its commands. It ends with this
/// object.
class SoakClock {
public:
    /// Its line is behind `link`, so that it is found again after it has vanished. Under wine the
    /// port has such a link already.
    SoakClock([[maybe_unused]] const QString& link, const QStringList& options)
        : m_channel(SimulatorChannel::make())
    {
#ifdef Q_OS_WIN
        m_channel->start(options);
#else
        m_channel->start(QStringList{QStringLiteral("--link"), link} + options);
        qputenv("HCT_COM1", link.toLocal8Bit());
#endif
        // Its first line is the device.
        m_channel->readLine();
    }

    /// How often the line has vanished so far.
    int vanished() const { return m_vanished; }

    /// Runs a command; its lines before "ok". No event of this program runs meanwhile.
    QStringList command(const QString& text)
    {
        m_channel->writeLine(text);
        QStringList lines;
        for (;;) {
            const QString line = m_channel->readLine();
            if (line == QLatin1String("ok"))
                return lines;
            if (line.isEmpty() || line.startsWith(QLatin1String("error: ")))
                qFatal("the simulated clock does not obey: %s -> %s", qPrintable(text),
                       qPrintable(line));
            if (line == QLatin1String("event vanished"))
                ++m_vanished;
            else if (!line.startsWith(QLatin1String("event ")))
                lines += line;
        }
    }
    /// What "state" tells, by its keys.
    QMap<QString, QString> state()
    {
        QMap<QString, QString> values;
        for (const QString& line : command(QStringLiteral("state")))
            values.insert(line.section(u'=', 0, 0), line.section(u'=', 1));
        return values;
    }

private:
    std::unique_ptr<SimulatorChannel> m_channel;
    int m_vanished = 0;
};
