#pragma once

#include "ClockJob.h"
#include "ProgrammeTransfer.h"

class Console;
class Session;

/// What the jobs with the programme of a clock have in common: they read it first, as the
/// programming window does.
class ProgrammeJob : public ClockJob {
    Q_OBJECT
public:
    void begin() override;
    QString abandon() override;

protected:
    ProgrammeJob(Session& session, Console& console);

    /// The programme of the clock has been read.
    virtual void opened() = 0;
    /// The job ends early. What the clock has and has not taken, in Spanish; empty when there is
    /// nothing to say.
    virtual QString giveUp() { return {}; }
    /// Ends the job, and tells what the file has and the clock has not. `good` is told when there
    /// is no difference, and `advice` when there is one.
    void tellDifferences(const Programme& wanted, const QString& good, const QString& advice);
    void finish(ExitStatus status);

    Console& console() { return m_console; }
    ProgrammeTransfer& transfer() { return m_transfer; }
    const ProgrammeTransfer& transfer() const { return m_transfer; }

private:
    void fail();

    Session& m_session;
    Console& m_console;
    ProgrammeTransfer m_transfer;
};
