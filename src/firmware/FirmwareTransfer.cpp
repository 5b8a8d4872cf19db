#include "FirmwareTransfer.h"

#include "Answer.h"
#include "MessageCodes.h"
#include "MessageLink.h"

#include <functional>
#include <limits>

namespace {

constexpr qint16 mostFailures = 6;

} // namespace

FirmwareTransfer::FirmwareTransfer(const HexFile& file, frmCrono& crono, MessageLink& link)
    : m_file(file), m_link(link), m_registration(crono, *this, CronoRegistration::everyTick)
{}

void FirmwareTransfer::start()
{
    if (m_state == State::Sending || m_file.LineCount() < 1)
        return;
    m_currentLine = 0;
    m_state = State::Sending;
    m_registration.ActivaCliente();
}

void FirmwareTransfer::interrupt()
{
    mntProgramacion.release();
    becomeIdle();
}

void FirmwareTransfer::leave()
{
    interrupt();
    m_registration.EliminaCliente();
}

void FirmwareTransfer::ProcesoDiferido()
{
    switch (m_state) {
    case State::Idle: return;
    case State::Sending: return SendCurrentLine();
    }
}

void FirmwareTransfer::SendCurrentLine()
{
    FinalLineFlag flag = MoreLinesFollow;
    if (m_currentLine == m_file.LineCount() - 1)
        flag = m_resetAfterwards ? LastLineThenReset : LastLine;
    mntProgramacion.request(m_link, messagecode::Write, message(m_file.Lines(m_currentLine), flag),
                            std::bind_front(isAccepted, selector::FirmwareLineWrite),
                            std::bind_front(&FirmwareTransfer::mntProgramacion_Recibido, this));
}

QByteArray FirmwareTransfer::message(const HexLine& line, FinalLineFlag flag)
{
    QByteArray body;
    body.reserve(line.Count + 9);
    body.append(static_cast<char>(selector::FirmwareLineWrite));
    body.append(static_cast<char>(line.Count));
    const auto address = static_cast<quint32>(line.Address);
    quint32 sum = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const auto byte = static_cast<quint8>(address >> shift);
        body.append(static_cast<char>(byte));
        sum += byte;
    }
    body.append(static_cast<char>(flag));
    for (const quint8 byte : line.Data) {
        body.append(static_cast<char>(byte));
        sum += byte;
    }
    // The clock expects the sum without complement, and a zero after it.
    body.append(static_cast<char>(sum & 0xFF));
    body.append('\0');
    return body;
}

void FirmwareTransfer::mntProgramacion_Recibido(quint8 /*code*/, const QByteArray& /*body*/,
                                                LinkStatus status)
{
    if (status == LinkStatus::Good)
        advance();
    else
        countFailure(status);
}

void FirmwareTransfer::countFailure(LinkStatus status)
{
    m_lastFailure = status;
    // Intentionally not reset when a transfer ends or begins: after a failed transfer the next one
    // fails at its first bad acknowledgement, until a good one has arrived.
    if (m_failCount < std::numeric_limits<qint16>::max())
        ++m_failCount;
    if (m_failCount < mostFailures)
        return;
    becomeIdle();
    emit failed();
}

void FirmwareTransfer::advance()
{
    m_failCount = 0;
    const HexLine& line = m_file.Lines(m_currentLine);
    const qint16 acknowledged = m_currentLine;
    ++m_currentLine;
    const bool done = m_currentLine == m_file.LineCount();
    if (done)
        becomeIdle();
    emit lineAcknowledged(
        acknowledged, static_cast<qint32>(static_cast<quint32>(line.Address) + line.Count - 1U));
    if (done)
        emit finished();
}

void FirmwareTransfer::becomeIdle()
{
    m_state = State::Idle;
    m_registration.DesactivaCliente();
}
