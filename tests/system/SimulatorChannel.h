#pragma once

#include <QString>
#include <QStringList>

#include <memory>

/// The way to a simulated clock: what is written reaches its standard input, what is read comes
/// from its standard output.
class SimulatorChannel {
public:
    virtual ~SimulatorChannel() = default;

    /// Starts a simulator. Its first line is the device to open.
    virtual void start(const QStringList& options) = 0;
    virtual void writeLine(const QString& line) = 0;
    /// The next line; empty when none comes for long.
    virtual QString readLine() = 0;
    /// How the simulator reaches a file of this program.
    virtual QString pathOf(const QString& file) const = 0;

    /// The simulator as a process of this program. For a program under wine: the one that the port
    /// COM9 leads to, because a Windows program cannot hold a Linux one.
    static std::unique_ptr<SimulatorChannel> make();
};
