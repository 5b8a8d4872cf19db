#include "ClockSetting.h"

#include "Answer.h"
#include "MessageCodes.h"
#include "MessageLink.h"
#include "modUtilidades.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {

// 500 and not 400 is intentional: it is the clock's own rule. For it 29/02/2500 exists and
// 29/02/2400 does not.
bool isLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 500 == 0; }

ClockFields fieldsOf(const QDateTime& moment)
{
    const QDate date = moment.date();
    const QTime time = moment.time();
    return {date.day(), date.month(), date.year(), time.hour(), time.minute(), time.second()};
}

} // namespace

ClockFields ClockFields::fromBlock(const StatusBlock& block)
{
    return {block.day(),   block.month(),   modUtilidades::fullYear(block.year()),
            block.hours(), block.minutes(), block.seconds()};
}

ClockSetting::ClockSetting(MessageLink& link, StatusLog& log, const ClockOfDay& clock)
    : m_link(link), m_log(log), m_clock(clock)
{}

bool ClockSetting::isValidDate(int day, int month, int year)
{
    if (day == 29 && month == 2)
        return isLeapYear(year);
    // Months without day 31 are 2, 4, 6, 9 and 11: the odd ones when counted from 0, modulo 7.
    const bool isShortMonth = (month - 1) % 7 % 2 == 1;
    return !(day == 31 && isShortMonth) && !(day == 30 && month == 2);
}

QByteArray ClockSetting::message(const ClockFields& fields)
{
    QByteArray body;
    for (const int value : {int(selector::ClockWrite), fields.seconds, fields.minutes, fields.hours,
                            fields.day, fields.month, fields.year % 100})
        body.append(static_cast<char>(value));
    return body;
}

void ClockSetting::begin(State source)
{
    m_failedAttempts = 0;
    m_state = source;
}

void ClockSetting::stop()
{
    m_state = State::Idle;
    mntSincronismo.release();
}

void ClockSetting::ProcesoDiferido()
{
    switch (m_state) {
    case State::Idle: return;
    case State::Manual: return send(m_fields);
    case State::Automatic: return send(fieldsOf(m_clock.now()));
    }
}

void ClockSetting::send(const ClockFields& fields)
{
    mntSincronismo.request(m_link, messagecode::Write, message(fields),
                           std::bind_front(isAccepted, selector::ClockWrite),
                           std::bind_front(&ClockSetting::mntSincronismo_Recibido, this));
}

void ClockSetting::mntSincronismo_Recibido(quint8 /*code*/, const QByteArray& /*body*/,
                                           LinkStatus status)
{
    if (status == LinkStatus::Good) {
        m_state = State::Idle;
        m_log.Rexistra(u"Reloj del equipo actualizado en fecha y hora"_s, false);
        emit accepted();
        return;
    }
    ++m_failedAttempts;
    if (m_failedAttempts >= mostAttempts)
        giveUp(status);
}

void ClockSetting::giveUp(LinkStatus status)
{
    m_state = State::Idle;
    // A receiver may open a box. While it is open the connection may end, and this object is
    // deleted with its window.
    StatusLog& log = m_log;
    emit gaveUp(status);
    log.Rexistra(u"Error intentando puesta en hora del equipo"_s, false);
}
