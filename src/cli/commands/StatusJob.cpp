#include "StatusJob.h"

#include "ClockTime.h"
#include "Console.h"
#include "Session.h"
#include "StatusReport.h"

using namespace Qt::StringLiterals;

StatusJob::StatusJob(Session& session, Console& console, Watch watch)
    : m_session(session), m_console(console), m_watch(watch)
{}

void StatusJob::begin()
{
    if (m_watch == Watch::EachChange)
        connect(&m_session.workflow(), &ConnectionWorkflow::generalDataReceived, this,
                &StatusJob::tellState);
    tellState();
}

QString StatusJob::abandon()
{
    disconnect(&m_session.workflow(), nullptr, this, nullptr);
    return {};
}

void StatusJob::tellState()
{
    const StatusReport report(m_session.globais().GeneralData, clocktime::ofAnswer(m_session));
    QJsonObject state = report.json();
    const QJsonObject whole = state;
    state.remove(u"secondsAhead"_s);
    if (state == m_told)
        return;
    m_told = state;
    const bool printed = m_console.print(whole, isEndless() ? report.line() : report.text());
    // Nobody reads on: the work is done.
    if (printed && isEndless())
        return;
    abandon();
    emit finished(ExitStatus::Done);
}
