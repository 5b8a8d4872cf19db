#include "ClockSetJob.h"

#include "ClockTime.h"
#include "CommonOptions.h"
#include "Console.h"
#include "Session.h"
#include "StatusReport.h"

using namespace Qt::StringLiterals;

namespace {

/// In seconds. A clock that has just been set may differ so much: the answer takes time, and both
/// cut off fractions.
constexpr qint64 toleranceAfterSetting = 2;
/// Afterwards: of requests for the general data, which the workflow repeats for ever.
constexpr int mostFailuresAfterwards = 3;

ClockFields fieldsOf(const QDateTime& wallTime)
{
    const QDate date = wallTime.date();
    const QTime time = wallTime.time();
    return {date.day(), date.month(), date.year(), time.hour(), time.minute(), time.second()};
}

} // namespace

ClockSetJob::ClockSetJob(Session& session, Console& console, const CommonOptions& options,
                         const Wish& wish)
    : m_session(session),
      m_console(console),
      m_options(options),
      m_wish(wish),
      m_setting(session.link(), session.log(), session.environment().clock),
      m_registration(session.crono(), m_setting, CronoRegistration::everyTick)
{
    connect(&m_setting, &ClockSetting::accepted, this, [this] {
        m_accepted = m_session.environment().clock.now();
        connect(&m_session.workflow(), &ConnectionWorkflow::generalDataReceived, this,
                &ClockSetJob::verify);
        connect(&m_session.workflow(), &ConnectionWorkflow::generalDataFailed, this,
                &ClockSetJob::verificationFailed);
    });
    connect(&m_setting, &ClockSetting::gaveUp, this, &ClockSetJob::fail);
}

void ClockSetJob::begin()
{
    m_before = secondsAhead();
    if (isToBeSet())
        return set();
    tell(false,
         u"El reloj no se ha cambiado: está %1."_s.arg(clocktime::differenceText(*m_before)));
    emit finished(ExitStatus::Done);
}

QString ClockSetJob::abandon()
{
    const bool taken = m_accepted.isValid();
    stop();
    return (taken ? u"El reloj ha aceptado la hora, pero no se ha podido comprobar"_s
                  : u"El reloj no ha confirmado la hora"_s) +
           u"; la que tiene se ve con: "_s + m_options.commandLine(u"status"_s);
}

bool ClockSetJob::isToBeSet() const
{
    return !m_wish.ifOffBy || !m_before || qAbs(*m_before) >= *m_wish.ifOffBy;
}

void ClockSetJob::set()
{
    if (m_wish.at)
        m_setting.setFields(fieldsOf(*m_wish.at));
    m_setting.begin(m_wish.at ? ClockSetting::State::Manual : ClockSetting::State::Automatic);
    m_registration.ActivaCliente();
}

void ClockSetJob::fail(LinkStatus status)
{
    stop();
    m_console.tell(
        exitStatusOf(status) == ExitStatus::Refused
            ? u"El reloj no acepta la fecha y la hora: si al repetir la orden sigue igual, avise "
              "al servicio técnico."_s
            : u"El reloj ha dejado de contestar y no ha confirmado la hora: compruebe el "
              "cable y repita la orden."_s);
    emit finished(exitStatusOf(status));
}

void ClockSetJob::verify()
{
    stop();
    const auto after = secondsAhead();
    if (!after || qAbs(*after) > toleranceAfterSetting) {
        m_console.tell(u"El reloj ha aceptado la hora, pero muestra otra: si al repetir la orden "
                       "sigue igual, avise al servicio técnico."_s);
        return emit finished(ExitStatus::Refused);
    }
    tell(true, m_before ? u"El reloj se ha puesto en hora; estaba %1."_s.arg(
                              clocktime::differenceText(*m_before))
                        : u"El reloj se ha puesto en hora: no tenía una fecha válida."_s);
    emit finished(ExitStatus::Done);
}

void ClockSetJob::verificationFailed(LinkStatus status)
{
    if (++m_failures < mostFailuresAfterwards)
        return;
    m_console.tell(abandon());
    emit finished(exitStatusOf(status));
}

std::optional<qint64> ClockSetJob::secondsAhead() const
{
    QDateTime now = clocktime::ofAnswer(m_session);
    if (m_wish.at)
        now = m_accepted.isValid() ? m_wish.at->addMSecs(m_accepted.msecsTo(now)) : *m_wish.at;
    return clocktime::secondsAhead(StatusBlock(m_session.globais().GeneralData), now);
}

void ClockSetJob::tell(bool changed, const QString& text)
{
    const QDateTime now = clocktime::ofAnswer(m_session);
    const QJsonObject status = StatusReport(m_session.globais().GeneralData, now).json();
    const QJsonObject result{{u"changed"_s, changed},
                             {u"time"_s, status[u"time"_s]},
                             {u"secondsAhead"_s, status[u"secondsAhead"_s]}};
    // What runs every night has nothing to tell when nothing has changed.
    if (m_console.isJson() || changed || !m_console.isQuiet())
        m_console.print(result, text);
}

void ClockSetJob::stop()
{
    m_setting.stop();
    disconnect(&m_session.workflow(), nullptr, this, nullptr);
}
