#pragma once

#include <QMap>
#include <QProcess>
#include <QStringList>

/// The simulated clock as a process of its own, with its commands. It ends with this object. Its
/// line is behind a link, so that it is found again after it has vanished.
class SoakClock {
public:
    SoakClock(const QString& simulator, const QString& link, const QStringList& options)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(simulator, QStringList{QStringLiteral("--exit-with-parent"),
                                               QStringLiteral("--link"), link} +
                                       options);
        m_started = !readLine().isEmpty();
        qputenv("HCT_COM1", link.toLocal8Bit());
    }
    ~SoakClock()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }
    SoakClock(const SoakClock&) = delete;
    SoakClock& operator=(const SoakClock&) = delete;

    bool hasStarted() const { return m_started; }
    /// How often the line has vanished so far.
    int vanished() const { return m_vanished; }

    /// Runs a command; its lines before "ok". No event of this program runs meanwhile.
    QStringList command(const QString& text)
    {
        m_process.write(text.toUtf8() + '\n');
        QStringList lines;
        for (;;) {
            const QString line = readLine();
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
    /// Empty when none comes for long.
    QString readLine()
    {
        constexpr int patience = 30'000;
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(patience))
                return {};
        }
        return QString::fromUtf8(m_process.readLine()).trimmed();
    }

    QProcess m_process;
    bool m_started = false;
    int m_vanished = 0;
};
