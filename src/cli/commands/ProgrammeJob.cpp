#include "ProgrammeJob.h"

#include "Console.h"
#include "ProgrammeJson.h"
#include "ProgrammeTexts.h"
#include "Session.h"
#include "StatusBlock.h"

using namespace Qt::StringLiterals;

ProgrammeJob::ProgrammeJob(Session& session, Console& console)
    : m_session(session),
      m_console(console),
      m_transfer({session.crono(), session.link(), session.globais(), session.log()},
                 StatusBlock(session.globais().GeneralData).model())
{
    connect(&m_transfer, &ProgrammeTransfer::opened, this, &ProgrammeJob::opened);
    connect(&m_transfer, &ProgrammeTransfer::failed, this, &ProgrammeJob::fail);
}

void ProgrammeJob::begin() { m_transfer.open(); }

QString ProgrammeJob::abandon()
{
    m_transfer.stop();
    return giveUp();
}

void ProgrammeJob::fail()
{
    // The end of the connection is told to the one who runs the job, who abandons it.
    if (!m_session.link().isConnected() || m_transfer.lastFailure() == LinkStatus::PortClosed)
        return;
    const ExitStatus status = exitStatusOf(m_transfer.lastFailure());
    const QString reason =
        status == ExitStatus::Refused
            ? u"El reloj no acepta la orden: si al repetirla sigue igual, avise al "
              "servicio técnico."_s
            : u"El reloj ha dejado de contestar: compruebe el cable."_s;
    const QString left = giveUp();
    m_console.tell(left.isEmpty() ? reason : reason + u' ' + left);
    finish(status);
}

void ProgrammeJob::tellDifferences(const Programme& wanted, const QString& good,
                                   const QString& advice)
{
    const auto entries =
        ProgrammeDifference::between(wanted, m_transfer.held(), m_transfer.model());
    if (m_console.isJson())
        m_console.print({{u"model"_s, ProgrammeTexts::modelName(m_transfer.model())},
                         {u"equal"_s, entries.isEmpty()},
                         {u"differences"_s, ProgrammeJson::array(entries)}});
    else
        for (const auto& entry : entries)
            m_console.print(entry.text);
    if (entries.isEmpty()) {
        m_console.note(good);
        return finish(ExitStatus::Done);
    }
    m_console.tell(u"El reloj no tiene el programa del archivo: arriba está lo que cambia del "
                   "archivo al reloj. "_s +
                   advice);
    finish(ExitStatus::Refused);
}

void ProgrammeJob::finish(ExitStatus status)
{
    m_transfer.stop();
    emit finished(status);
}
