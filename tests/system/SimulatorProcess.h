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
    /// What the clock was asked while "trace on" was in force, up to the latest command. Each is
    /// the code without the alternating bit, and the body, in hexadecimal: "69 da01e9c0...".
    const QStringList& requests() const { return m_requests; }
    /// How many of them begin so.
    qsizetype requestCount(const QString& start) const;
    /// Waits until there are so many; false when they do not come.
    bool waitForRequests(const QString& start, int count);
    /// A file of the test, as commands must name it.
    QString pathOf(const QString& file) const;

private:
    void takeTrace(const QString& line);

    std::unique_ptr<SimulatorChannel> m_channel;
    QString m_device;
    QStringList m_requests;
};
