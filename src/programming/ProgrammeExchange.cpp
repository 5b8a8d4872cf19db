#include "ProgrammeExchange.h"

#include "Answer.h"
#include "MessageCodes.h"
#include "MessageLink.h"
#include "ProgrammeMessages.h"
#include "StatusLog.h"
#include "modGlobais.h"

#include <QPointer>
#include <QTimer>

#include <utility>

using namespace Qt::StringLiterals;

ProgrammeExchange::ProgrammeExchange(const Services& services, ClockModel model,
                                     const Programme& programme,
                                     std::function<HolidayTable()> table)
    : m_link(services.link),
      m_globais(services.globais),
      m_log(services.log),
      m_model(model),
      m_programme(programme),
      m_table(std::move(table))
{
    m_registration.emplace(services.crono, *this, CronoRegistration::everyTick);
    // When the connection ends, fail at once. The window is locked during the exchange, and would
    // stay locked until the next connection, which may be to another clock.
    connect(&m_link, &MessageLink::connectionEnded, this, [this] {
        if (m_state != State::Idle)
            giveUpWithoutConnection();
    });
}

void ProgrammeExchange::readHolidays() { begin(State::Opening); }

void ProgrammeExchange::readAll() { begin(State::ReadRequested); }

void ProgrammeExchange::send()
{
    m_block = 0;
    m_partsSent = 0;
    m_partsAccepted = 0;
    begin(State::SendRequested);
}

void ProgrammeExchange::begin(State state)
{
    if (!m_registration)
        return;
    m_state = state;
    m_registration->ActivaCliente();
    // Enviar without a connection fails at once, with the same message.
    if (!m_link.isConnected())
        giveUpWithoutConnection();
}

void ProgrammeExchange::stop()
{
    m_state = State::Idle;
    mntDatosXerais.release();
    mntLectFestVacacionais.release();
    mntProgBloquesAvisos.release();
    mntProgFestVacacionais.release();
    m_registration.reset();
}

void ProgrammeExchange::ProcesoDiferido()
{
    switch (m_state) {
    case State::Idle: return;
    case State::ReadRequested:
    case State::SendRequested: return requestGeneralData();
    case State::Opening: return requestHolidays();
    case State::WritingBlocks: return writeBlock();
    case State::WritingHolidays: return writeHolidays();
    case State::GivingUp: return giveUp();
    }
}

void ProgrammeExchange::giveUpWithoutConnection()
{
    m_state = State::GivingUp;
    // Without a connection the timer service is off, so post the failure ourselves. Post it,
    // because a form opens a box, which must not delay the end of the connection. When the program
    // ends, there is nobody to tell.
    QTimer::singleShot(0, this, [this] {
        if (m_state == State::GivingUp && !m_globais.ShuttingDown)
            giveUp();
    });
}

void ProgrammeExchange::giveUp()
{
    // The connection may end while the box about the failure is open.
    if (m_givingUp)
        return;
    m_givingUp = true;
    m_registration->DesactivaCliente();
    const QPointer<ProgrammeExchange> self(this);
    emit failed();
    if (!self)
        return;
    m_givingUp = false;
    m_state = State::Idle;
}

void ProgrammeExchange::requestGeneralData()
{
    mntDatosXerais.request(m_link, messagecode::Read, ProgrammeMessages::generalDataRequest(),
                           ProgrammeMessages::isGeneralData,
                           std::bind_front(&ProgrammeExchange::mntDatosXerais_Recibido, this));
}

void ProgrammeExchange::requestHolidays()
{
    mntLectFestVacacionais.request(
        m_link, messagecode::Read, ProgrammeMessages::holidaysRequest(),
        ProgrammeMessages::isHolidays,
        std::bind_front(&ProgrammeExchange::mntLectFestVacacionais_Recibido, this));
}

void ProgrammeExchange::writeBlock()
{
    m_partsSent = m_block + 1;
    const AlarmBlock& block = m_programme.blocks[static_cast<std::size_t>(m_block)];
    mntProgBloquesAvisos.request(
        m_link, messagecode::Write, ProgrammeMessages::alarmBlock(block, m_block, m_model),
        std::bind_front(isAccepted, selector::AlarmBlockWrite),
        std::bind_front(&ProgrammeExchange::mntProgBloquesAvisos_Recibido, this));
}

void ProgrammeExchange::writeHolidays()
{
    m_partsSent = partCount;
    mntProgFestVacacionais.request(
        m_link, messagecode::Write, ProgrammeMessages::holidays(m_table()),
        // The clock says nothing about the table in its answer.
        isAnyAnswer, std::bind_front(&ProgrammeExchange::mntProgFestVacacionais_Recibido, this));
}

void ProgrammeExchange::mntDatosXerais_Recibido(quint8 /*code*/, const QByteArray& body,
                                                LinkStatus status)
{
    if (status != LinkStatus::Good)
        return refused(u"Fallo en lectura de datos generales"_s, status);
    m_globais.GeneralData = body;
    m_state = m_state == State::ReadRequested ? State::Opening : State::WritingBlocks;
}

void ProgrammeExchange::mntLectFestVacacionais_Recibido(quint8 /*code*/, const QByteArray& body,
                                                        LinkStatus status)
{
    if (status != LinkStatus::Good)
        return refused(u"Fallo en lectura de festivos y vacaciones"_s, status);
    becomeIdle();
    emit holidaysRead(ProgrammeMessages::holidaysOf(body));
}

void ProgrammeExchange::mntProgBloquesAvisos_Recibido(quint8 /*code*/, const QByteArray& /*body*/,
                                                      LinkStatus status)
{
    if (status != LinkStatus::Good)
        return refused(u"Fallo en escritura del bloque de avisos %1"_s.arg(m_block + 1), status);
    ++m_block;
    m_partsAccepted = m_block;
    if (m_block == Programme::blockCount)
        m_state = State::WritingHolidays;
    emit partAccepted(m_block - 1);
}

void ProgrammeExchange::mntProgFestVacacionais_Recibido(quint8 /*code*/, const QByteArray& /*body*/,
                                                        LinkStatus status)
{
    if (status != LinkStatus::Good)
        return refused(u"Fallo en escritura de festivos y vacaciones"_s, status);
    becomeIdle();
    m_partsAccepted = partCount;
    emit partAccepted(partCount - 1);
    emit sent();
}

void ProgrammeExchange::becomeIdle()
{
    m_state = State::Idle;
    m_registration->DesactivaCliente();
}

void ProgrammeExchange::refused(const QString& what, LinkStatus status)
{
    m_log.Rexistra(u"%1 (estado %2)"_s.arg(what).arg(qToUnderlying(status)), false);
    m_lastFailure = status;
    ++m_refusals;
    if (m_refusals > refusalLimit)
        m_state = State::GivingUp;
}
