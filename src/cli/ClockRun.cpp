#include "ClockRun.h"

#include "CommonOptions.h"
#include "Console.h"

#include <utility>

using namespace Qt::StringLiterals;

ClockRun::ClockRun(Session& session, Console& console, const CommonOptions& options,
                   MakeJob makeJob)
    : m_session(session),
      m_console(console),
      m_options(options),
      m_makeJob(std::move(makeJob)),
      m_connection(session, options.modemNumber, options.patience())
{
    connect(&m_connection, &Connection::established, this, &ClockRun::begin);
    connect(&m_connection, &Connection::failed, this, &ClockRun::fail);
    connect(&m_connection, &Connection::unanswered, this, [this](const QString& port) {
        m_console.note(u"El reloj no contesta por %1; se sigue intentando."_s.arg(port));
    });
}

void ClockRun::begin()
{
    m_job = m_makeJob(m_session, m_console, m_options);
    // Later: the job is in the midst of an answer of the link.
    connect(m_job.get(), &ClockJob::finished, this, &ClockRun::end, Qt::QueuedConnection);
    m_job->begin();
}

void ClockRun::interrupt(int signalNumber)
{
    if (m_job && m_job->isEndless()) {
        m_job->abandon();
        return end(ExitStatus::Done);
    }
    abandon(m_job ? u"Interrumpido."_s
                  : u"Interrumpido: el reloj no ha contestado todavía, y no se ha cambiado nada en "
                    "él."_s);
    end(endedBySignal(signalNumber));
}

void ClockRun::fail(ExitStatus status, const QString& reason)
{
    abandon(reason);
    end(status);
}

void ClockRun::abandon(const QString& why)
{
    if (m_over)
        return;
    const QString left = m_job ? m_job->abandon() : QString();
    m_console.tell(left.isEmpty() ? why : why + u' ' + left);
}

void ClockRun::end(ExitStatus status)
{
    if (m_over)
        return;
    m_over = true;
    m_session.workflow().unload();
    emit ended(status);
}
