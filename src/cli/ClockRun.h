#pragma once

#include "ClockJob.h"
#include "Connection.h"

#include <QObject>

#include <functional>
#include <memory>

class Console;
struct CommonOptions;

/// One job with one clock: connects, lets the job work, ends the connection, and tells what went
/// wrong.
class ClockRun : public QObject {
    Q_OBJECT
public:
    using MakeJob = std::function<std::unique_ptr<ClockJob>(Session& session, Console& console,
                                                            const CommonOptions& options)>;

    /// The session has its settings already. The job may keep a reference to the options.
    ClockRun(Session& session, Console& console, const CommonOptions& options, MakeJob makeJob);

    /// Call in the event loop.
    void start() { m_connection.open(); }
    /// The system or the user ends the program.
    void interrupt(int signalNumber);

signals:
    /// With the exit status of the program. The connection is over.
    void ended(ExitStatus status);

private:
    void begin();
    void fail(ExitStatus status, const QString& reason);
    /// Ends the job early; `why` and what the clock has not taken are told.
    void abandon(const QString& why);
    void end(ExitStatus status);

    Session& m_session;
    Console& m_console;
    const CommonOptions& m_options;
    const MakeJob m_makeJob;
    Connection m_connection;
    std::unique_ptr<ClockJob> m_job;
    bool m_over = false;
};
