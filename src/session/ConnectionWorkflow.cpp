#include "ConnectionWorkflow.h"

#include "Answer.h"
#include "LinkTrace.h"
#include "MessageCodes.h"
#include "MessageLink.h"
#include "StatusBlock.h"
#include "StatusLog.h"
#include "modGlobais.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// In ticks of the timer service (1 ms).
constexpr qint16 period = 10;
constexpr qint16 mostFailures = 4;

/// Byte 1 of the answer to an identification.
constexpr quint8 accepted = 0;
constexpr quint8 closed = 1;

/// In bytes: clocks of every family send general data up to the refusal.
constexpr qsizetype shortestGeneralData = 5;

bool isGeneralData(quint8 code, const QByteArray& body)
{
    return isAccepted(selector::GeneralData, code, body) && body.size() >= shortestGeneralData;
}

} // namespace

ConnectionWorkflow::ConnectionWorkflow(frmCrono& crono, MessageLink& link, modGlobais& globais,
                                       StatusLog& log)
    : m_crono(crono), m_link(link), m_globais(globais), m_log(log)
{}

void ConnectionWorkflow::load()
{
    m_state = ConnectionState::Disconnected;
    ConnectionEnded();
    m_registration.emplace(m_crono, *this, period);
}

void ConnectionWorkflow::Conectar(bool throughModem)
{
    if (m_link.isStarting() || m_globais.ShuttingDown)
        return;
    // Dialling lets events run, and no request may be sent between modem commands.
    m_crono.setTimerEnabled(false);
    m_link.ArrancaConexion(throughModem);
    if (m_globais.ShuttingDown)
        return;
    m_state = ConnectionState::Identifying;
    m_failedAttempts = 0;
    m_established = false;
    m_registration->ActivaCliente();
    m_crono.setTimerEnabled(true);
    m_log.Rexistra(u"Estableciendo conexión..."_s, false);
}

void ConnectionWorkflow::Desconectar()
{
    if (m_state != ConnectionState::Disconnected)
        end(u"Interrumpiendo conexión"_s);
}

bool ConnectionWorkflow::exitNeedsConsent() const
{
    return StatusBlock(m_globais.GeneralData).isRemoteControlled();
}

void ConnectionWorkflow::unload()
{
    m_link.RemataConexion();
    m_globais.ShuttingDown = true;
    m_crono.setTimerEnabled(false);
    m_link.stopTimer();
}

void ConnectionWorkflow::ProcesoDiferido()
{
    switch (m_state) {
    case ConnectionState::Disconnected: return;
    case ConnectionState::Identifying: identificacion(true); return;
    case ConnectionState::Connected: SendGeneralDataRequest(); return;
    case ConnectionState::Closing: identificacion(false); return;
    }
}

void ConnectionWorkflow::identificacion(bool open)
{
    const quint8 number = m_link.identificacion();
    QByteArray body;
    body.append(static_cast<char>(selector::Identification));
    body.append(static_cast<char>(open ? number : ~number));
    mntIdentificacion.request(
        m_link, messagecode::Identification, body,
        std::bind_front(&ConnectionWorkflow::isGoodIdentification, this),
        std::bind_front(&ConnectionWorkflow::mntIdentificacion_Recibido, this));
}

void ConnectionWorkflow::SendGeneralDataRequest()
{
    mntDatosXerais.request(m_link, messagecode::Read,
                           QByteArray(1, static_cast<char>(selector::GeneralData)), isGeneralData,
                           std::bind_front(&ConnectionWorkflow::mntDatosXerais_Recibido, this));
}

void ConnectionWorkflow::mntIdentificacion_Recibido(quint8 /*code*/, const QByteArray& /*body*/,
                                                    LinkStatus status)
{
    if (status == LinkStatus::Good) {
        m_failedAttempts = 0;
        if (m_state == ConnectionState::Identifying) {
            m_log.Rexistra(u"Identificación aceptada"_s, false);
            m_state = ConnectionState::Connected;
        } else if (m_state == ConnectionState::Closing) {
            end(u"Interrumpiendo conexión"_s);
        }
        return;
    }
    ++m_failedAttempts;
    emit identificationFailed(status);
    const QString failure = u"Fallo en identificación del equipo"_s;
    if (m_failedAttempts >= mostFailures || m_state == ConnectionState::Closing)
        end(failure);
    else
        m_log.Rexistra(failure, false);
}

void ConnectionWorkflow::requestClosing() { m_state = ConnectionState::Closing; }

bool ConnectionWorkflow::isGoodIdentification(quint8 code, const QByteArray& body) const
{
    if (!isAnswerOf(selector::Identification, code, body))
        return false;
    if (m_state == ConnectionState::Identifying)
        return byteAt(body, 1) == accepted;
    return m_state != ConnectionState::Closing || byteAt(body, 1) == closed;
}

void ConnectionWorkflow::mntDatosXerais_Recibido(quint8 /*code*/, const QByteArray& body,
                                                 LinkStatus status)
{
    if (status == LinkStatus::Good) {
        status = checkedGeneralData(body);
        if (status != LinkStatus::Good)
            qCDebug(linkEvents, "answer not good: status %d", qToUnderlying(status));
    }
    if (status == LinkStatus::Good) {
        m_failedAttempts = 0;
        takeGeneralData(body);
    } else {
        emit generalDataFailed(status);
        if (++m_failedAttempts >= mostFailures) {
            m_failedAttempts = 0;
            m_state = ConnectionState::Identifying;
        }
    }
    if (status == LinkStatus::ConnectionOver) {
        m_state = ConnectionState::Disconnected;
        ConnectionEnded();
    }
}

LinkStatus ConnectionWorkflow::checkedGeneralData(const QByteArray& body)
{
    const StatusBlock block(body);
    if (block.refusal() != 0)
        return LinkStatus::Refused;
    // Every type is taken, those that no clock of the maker has included.
    m_globais.DeviceType = block.deviceType();
    if (block.deviceType() == StatusBlock::familyType && !block.isFull())
        return LinkStatus::WrongAnswer;
    return LinkStatus::Good;
}

void ConnectionWorkflow::takeGeneralData(const QByteArray& body)
{
    m_globais.GeneralData = body;
    if (!m_established) {
        emit connectionStatusChanged(true);
        m_globais.GeneralDataAtConnect = body;
        m_established = true;
        ConnectionEstablished();
    }
    emit generalDataReceived();
}

void ConnectionWorkflow::ConnectionEstablished()
{
    m_globais.LinkEstablished = true;
    emit clockCommandsUnlocked();
    m_log.Rexistra(u"Conexión establecida"_s, false);
}

void ConnectionWorkflow::ConnectionEnded()
{
    m_crono.setTimerEnabled(false);
    emit clockCommandsLocked();
    m_globais.LinkEstablished = false;
    m_established = false;
    emit clockWindowsOutdated();
    m_link.RemataConexion();
    m_log.Rexistra(u"Conexión interrumpida"_s, false);
    emit connectionStatusChanged(false);
}

void ConnectionWorkflow::end(const QString& lastWords)
{
    m_log.Rexistra(lastWords, false);
    m_state = ConnectionState::Disconnected;
    ConnectionEnded();
}
