#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// The simulated clock as a process of its own, behind a pseudo-terminal.
class SimulatorProcess {
public:
    explicit SimulatorProcess(const QStringList& options = {});
    ~SimulatorProcess();

    /// The device to open; empty when the simulator did not start.
    const QString& device() const { return m_device; }
    /// Gives a command; what it answered before its "ok". Fails the test on an "error".
    QStringList command(const QString& text);
    /// The value of `key` in what `state` tells.
    QString state(const QString& key);

private:
    QString readLine();

    QProcess m_process;
    QString m_device;
};
