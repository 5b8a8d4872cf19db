#pragma once

#include <QString>
#include <QStringList>

#include <memory>

/// The channel to a simulated clock: writes go to its standard input, reads come from its standard
/// output.
class SimulatorChannel {
public:
    virtual ~SimulatorChannel() = default;

    /// Starts a simulator. Its first line is the device to open.
    virtual void start(const QStringList& options) = 0;
    virtual void writeLine(const QString& line) = 0;
    /// The next line; empty when none comes in time.
    virtual QString readLine() = 0;
    /// The path by which the simulator reaches a file of this program.
    virtual QString pathOf(const QString& file) const = 0;

    /// Starts the simulator as a process. Under wine a Windows program cannot start a Linux one, so
    /// there it is the simulator behind COM9.
    static std::unique_ptr<SimulatorChannel> make();
};
