#include "RemoteControl.h"

#include "Answer.h"
#include "MessageCodes.h"
#include "MessageLink.h"

#include <functional>

namespace {

QByteArray message(quint8 area, quint8 value)
{
    QByteArray body;
    body.append(static_cast<char>(area)).append(static_cast<char>(value));
    return body;
}

} // namespace

RemoteControl::RemoteControl(MessageLink& link, bool manual) : m_link(link), m_manual(manual) {}

quint8 RemoteControl::offMask() const
{
    unsigned mask = 0;
    for (int i = 0; i < outputCount; ++i)
        mask |= position(i) == 0 ? 1u << i : 0u;
    return static_cast<quint8>(mask);
}

void RemoteControl::setManual(bool manual)
{
    m_manual = manual;
    if (m_manual && m_stateKnown)
        m_nextAction = NextAction::SendCommand;
}

void RemoteControl::setPosition(int index, int position)
{
    if (m_manual)
        place(index, position);
}

void RemoteControl::stop()
{
    m_nextAction = NextAction::None;
    mntTelemando.release();
    mntLectEstadoSaidas.release();
}

void RemoteControl::ProcesoDiferido()
{
    switch (m_nextAction) {
    case NextAction::None: return;
    case NextAction::SendCommand: return sendCommand();
    case NextAction::ReadState: return sendStateRead();
    }
}

void RemoteControl::sendCommand()
{
    mntTelemando.request(m_link, messagecode::Write, message(selector::OutputsWrite, offMask()),
                         std::bind_front(isAccepted, selector::OutputsWrite),
                         std::bind_front(&RemoteControl::mntTelemando_Recibido, this));
}

void RemoteControl::sendStateRead()
{
    mntLectEstadoSaidas.request(
        m_link, messagecode::Read, message(selector::ModeAndOutputsRead, m_manual ? 1 : 0),
        std::bind_front(isAnswerOf, selector::ModeAndOutputsRead),
        std::bind_front(&RemoteControl::mntLectEstadoSaidas_Recibido, this));
}

void RemoteControl::mntTelemando_Recibido(quint8 /*code*/, const QByteArray& /*body*/,
                                          LinkStatus status)
{
    if (status != LinkStatus::Good) {
        emit requestFailed(status);
        return;
    }
    m_nextAction = NextAction::ReadState;
}

void RemoteControl::mntLectEstadoSaidas_Recibido(quint8 /*code*/, const QByteArray& body,
                                                 LinkStatus status)
{
    if (status != LinkStatus::Good) {
        emit requestFailed(status);
        return;
    }
    const quint8 restBits = byteAt(body, 1);
    // In manual mode the switches show what the operator asked for, not what the clock does.
    if (!(m_manual && m_stateKnown))
        for (int i = 0; i < outputCount; ++i)
            place(i, (restBits >> i & 1) != 0 ? 0 : 1);
    m_stateKnown = true;
    if (m_manual)
        m_nextAction = NextAction::SendCommand;
    emit stateRead(restBits);
}

void RemoteControl::place(int index, int position)
{
    int& current = m_positions.at(static_cast<std::size_t>(index));
    if (current == position)
        return;
    current = position;
    emit switchMoved(index, position);
}
