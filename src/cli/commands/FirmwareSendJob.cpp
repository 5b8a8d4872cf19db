#include "FirmwareSendJob.h"

#include "Console.h"
#include "ProgrammeTexts.h"
#include "Session.h"
#include "StatusBlock.h"

using namespace Qt::StringLiterals;

FirmwareSendJob::FirmwareSendJob(Session& session, Console& console, const HexFile& image,
                                 Reset reset)
    : m_session(session),
      m_console(console),
      m_image(image),
      m_reset(reset == Reset::Wanted),
      m_transfer(image, session.crono(), session.link())
{
    m_transfer.setResetAfterwards(m_reset);
    connect(&m_transfer, &FirmwareTransfer::lineAcknowledged, this, [this](qint16 index) {
        m_taken = index + 1;
        m_progress->advance(m_taken);
    });
    connect(&m_transfer, &FirmwareTransfer::finished, this, &FirmwareSendJob::tellSent);
    connect(&m_transfer, &FirmwareTransfer::failed, this, &FirmwareSendJob::fail);
}

QString FirmwareSendJob::linesText(int count)
{
    return count == 1 ? u"1 línea"_s : u"%1 líneas"_s.arg(count);
}

void FirmwareSendJob::begin()
{
    m_progress.emplace(m_console, u"Enviando firmware"_s, m_image.LineCount());
    m_transfer.start();
}

QString FirmwareSendJob::abandon()
{
    m_transfer.interrupt();
    m_progress->end();
    return linesTaken(NextLine::Unconfirmed);
}

void FirmwareSendJob::tellSent()
{
    const QString model =
        ProgrammeTexts::modelName(StatusBlock(m_session.globais().GeneralData).model());
    QString sentence =
        u"El firmware se ha enviado al %1: %2."_s.arg(model, linesText(m_image.LineCount()));
    if (m_reset)
        sentence += u" El reloj borra su memoria y se reinicia."_s;
    m_progress->end(sentence);
    if (m_console.isJson())
        m_console.print(
            {{u"model"_s, model}, {u"lines"_s, m_image.LineCount()}, {u"reset"_s, m_reset}});
    emit finished(ExitStatus::Done);
}

void FirmwareSendJob::fail()
{
    // The end of the connection is told to the one who runs the job, who abandons it.
    if (m_transfer.lastFailure() == LinkStatus::PortClosed)
        return;
    m_progress->end();
    const ExitStatus status = exitStatusOf(m_transfer.lastFailure());
    const bool refused = status == ExitStatus::Refused;
    const QString reason =
        refused
            ? u"El reloj no acepta la línea %1: compruebe que el archivo es de este modelo."_s.arg(
                  m_taken + 1)
            : u"El reloj ha dejado de contestar: compruebe el cable."_s;
    m_console.tell(reason + u' ' + linesTaken(refused ? NextLine::Refused : NextLine::Unconfirmed));
    emit finished(status);
}

QString FirmwareSendJob::linesTaken(NextLine next) const
{
    const int count = m_image.LineCount();
    if (m_taken == count)
        return u"El reloj ha tomado todas las líneas."_s;
    if (m_taken == 0 && next == NextLine::Refused)
        return u"El reloj no ha tomado ninguna línea."_s;
    QString sentence =
        m_taken == 0
            ? u"El reloj puede tener media imagen: no ha confirmado ninguna línea, de %1."_s.arg(
                  linesText(count))
            : u"El reloj tiene media imagen: ha tomado %1 de %2."_s.arg(m_taken).arg(
                  linesText(count));
    if (m_taken > 0 && next == NextLine::Unconfirmed)
        sentence += u" Puede haber tomado la %1."_s.arg(m_taken + 1);
    if (m_reset && m_taken == count - 1)
        sentence += u" Si se ha reiniciado, la tiene entera."_s;
    return sentence +
           u" Para que la tenga entera, envíe otra vez el archivo: se empieza por la primera línea."_s;
}
