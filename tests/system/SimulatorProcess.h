#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class SimulatorChannel;

/// The simulated clock as a process of its own, behind a pseudo-terminal.
class SimulatorProcess {
public:
    explicit SimulatorProcess(const QStringList& options = {});
    ~SimulatorProcess();

    /// The device to open; empty when the simulator did not start.
    const QString& device() const { return m_device; }
    /// Runs a command; its lines before "ok". Fails the test on an "error".
    QStringList command(const QString& text);
    /// The value of `key` in the answer to `state`.
    QString state(const QString& key);
    /// A file of the test, as commands must name it.
    QString pathOf(const QString& file) const;

private:
    std::unique_ptr<SimulatorChannel> m_channel;
    QString m_device;
};
