#include "MessageLink.h"

#include "AnswerReceiver.h"
#include "CommSettings.h"
#include "IntervalTimer.h"
#include "LinkTrace.h"
#include "MessageCodes.h"
#include "ModemDialogue.h"
#include "Pause.h"
#include "SerialPort.h"

#include <QEventLoop>
#include <QPointer>

#include <utility>

namespace {

/// The bit that alternates with every request sent, repetitions included.
constexpr quint8 toggleBit = 0x10;
/// The clock wakes at a lone first byte; before an identification it wants a gap after it.
constexpr std::chrono::milliseconds pauseBeforeFrame{4};
constexpr std::chrono::milliseconds pauseAfterWakingByte{50};

/// 576 characters of 10 bits, times the milliseconds of a second.
constexpr qint32 answerBits = 5760000;
constexpr std::chrono::milliseconds directMargin{200};
constexpr std::chrono::milliseconds modemMargin{4000};

/// The longest interval of the timer is 32767 ms.
constexpr qint64 timerMask = 0x7FFF;
constexpr std::chrono::milliseconds timerRange{32768};

/// Of an answer that is not good, only the status: its bytes may be no frame's.
void traceAnswer(quint8 code, const QByteArray& body, LinkStatus status)
{
    if (status == LinkStatus::Good)
        qCDebug(linkEvents, "answer: code %d, %d bytes, status 0", code,
                static_cast<int>(body.size()));
    else
        qCDebug(linkEvents, "%s: status %d",
                status == LinkStatus::TimeOut      ? "no answer"
                : status == LinkStatus::PortClosed ? "port closed"
                                                   : "wrong checksum",
                qToUnderlying(status));
}

} // namespace

MessageLink::MessageLink(SerialPort& commSerie, SerialPort& commModem,
                         IntervalTimer& tmrTemporizador, Pause& pause, const CommSettings& settings,
                         QObject* parent)
    : QObject(parent),
      m_ports(commSerie, commModem, settings),
      m_timer(tmrTemporizador),
      m_pause(pause),
      m_settings(settings)
{
    m_timer.setEnabled(false);
    connect(&m_timer, &IntervalTimer::tick, this, &MessageLink::timerTick);
    connect(&m_ports, &LinkPorts::openingChanged, this, &MessageLink::tellOccupation);
    connect(&m_ports, &LinkPorts::VisualizaPorto, this, &MessageLink::VisualizaPorto);
    for (SerialPort* port : {&commSerie, &commModem})
        connect(port, &SerialPort::received, this, [this, port] { portReceived(*port); });
}

void MessageLink::release(const AnswerReceiver& receiver)
{
    if (isBound(receiver))
        m_receiver = nullptr;
}

void MessageLink::Envia(quint8 code, QByteArray& body, qint32& timeout)
{
    SerialPort& port = m_ports.inUse();
    if (!port.isOpen()) {
        deliver(code, body, LinkStatus::PortClosed);
        return;
    }

    ++m_generation;
    setBusy(true);
    m_toggle = !m_toggle;
    if (code != messagecode::Identification && m_toggle)
        code |= toggleBit;
    if (body.size() > frame::maximumData)
        body.truncate(frame::maximumData);
    const quint8 station = estacion();
    const frame::Encoded encoded = frame::encode(station, code, body);

    port.clearOutput();
    port.clearInput();
    port.setReceiveThreshold(1);
    m_hunter = frame::HeaderHunter(station);
    setState(LinkState::HeaderHunt);

    m_pause.Wait(pauseBeforeFrame, false);
    port.write(encoded.start);
    if (code == messagecode::Identification)
        m_pause.Wait(pauseAfterWakingByte, false);
    port.write(encoded.rest);
    qCDebug(linkFrames, "COM%d sent %s", port.portNumber(),
            QByteArray(encoded.start + encoded.rest).toHex().constData());

    if (timeout == 0)
        timeout = static_cast<qint32>(answerTime().count());
    armTimer(std::chrono::milliseconds(timeout));
}

std::chrono::milliseconds MessageLink::answerTime() const
{
    return m_ports.isModemInUse()
               ? std::chrono::milliseconds(answerBits / m_settings.modemBitRate()) + modemMargin
               : std::chrono::milliseconds(answerBits / m_settings.directBitRate()) + directMargin;
}

quint8 MessageLink::estacion() const { return m_settings.estacion(); }

quint8 MessageLink::identificacion() const { return m_settings.identificacion(); }

void MessageLink::ArrancaConexion(bool throughModem)
{
    if (isStarting())
        return;
    if (isModemPhase() && m_modemDialogue)
        m_modemDialogue->ended();
    forgetRequest();
    setState(LinkState::Idle);
    m_connected = true;
    const bool isOpen = m_ports.open(throughModem);
    if (throughModem && isOpen && m_modemDialogue)
        waitWhileDialling();
}

void MessageLink::waitWhileDialling()
{
    m_starting = true;
    QEventLoop loop;
    connect(this, &MessageLink::becameIdle, &loop, &QEventLoop::quit);
    m_modemDialogue->start();
    if (m_state != LinkState::Idle)
        loop.exec();
    m_starting = false;
    // The loop also ends when the program does: then nobody else ends the attempt.
    if (m_state != LinkState::Idle)
        RemataConexion();
}

void MessageLink::RemataConexion()
{
    forgetRequest();
    m_receiver = nullptr;
    m_ports.close();
    setState(LinkState::Idle);
    if (m_modemDialogue)
        m_modemDialogue->ended();
    m_ports.showNone();
    if (std::exchange(m_connected, false))
        emit connectionEnded();
}

bool MessageLink::isModemPhase() const
{
    return m_state >= LinkState::ScriptCommand && m_state <= LinkState::Dialling;
}

void MessageLink::enterModemPhase(LinkState phase)
{
    forgetRequest();
    setState(phase);
}

void MessageLink::leaveModemPhase()
{
    stopTimer();
    ++m_generation;
    setState(LinkState::Idle);
}

void MessageLink::armTimer(std::chrono::milliseconds time)
{
    m_timer.setEnabled(false);
    m_ticksLeft = time / timerRange;
    std::chrono::milliseconds interval(time.count() & timerMask);
    // Divided among the ticks: a time with the allowance could have more ticks, and be shorter.
    if (interval > std::chrono::milliseconds::zero())
        interval += m_ports.inUse().answerAllowance() / (m_ticksLeft + 1);
    m_timer.setInterval(interval);
    m_timer.setEnabled(true);
}

void MessageLink::stopTimer() { m_timer.setEnabled(false); }

void MessageLink::forgetRequest()
{
    stopTimer();
    setBusy(false);
    ++m_generation;
}

void MessageLink::setBusy(bool busy)
{
    m_busy = busy;
    tellOccupation();
}

void MessageLink::setState(LinkState state)
{
    if (m_state == state)
        return;
    m_state = state;
    qCDebug(linkEvents, "state %d", qToUnderlying(state));
    tellOccupation();
    if (state == LinkState::Idle)
        emit becameIdle();
}

void MessageLink::tellOccupation()
{
    const bool occupied = isOccupied();
    if (occupied == m_toldOccupied)
        return;
    m_toldOccupied = occupied;
    emit occupationChanged();
}

void MessageLink::portReceived(SerialPort& port)
{
    switch (m_state) {
    case LinkState::Idle:
    case LinkState::ScriptCommand:
    case LinkState::Initialisation:
    case LinkState::PinSent:
    case LinkState::PinQuery:
    case LinkState::SignalQuery:
    case LinkState::Dialling:
        if (&port == &m_ports.modem() && m_modemDialogue)
            m_modemDialogue->received(port);
        return;
    case LinkState::HeaderHunt: huntHeader(port); return;
    case LinkState::Body: takeBody(port); return;
    }
}

void MessageLink::huntHeader(SerialPort& port)
{
    if (&port != &m_ports.inUse())
        return;
    port.setReadLength(1);
    while (port.inputCount() > 0) {
        const auto header = m_hunter.take(static_cast<quint8>(port.read().front()));
        if (!header)
            continue;
        m_header = *header;
        m_headerCame = std::chrono::steady_clock::now();
        setState(LinkState::Body);
        port.setReceiveThreshold(m_header.bytesToCome());
        takeBody(port);
        return;
    }
    port.awaitBytes(m_hunter.bytesToCome());
}

std::chrono::milliseconds MessageLink::sinceHeader() const
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now() - m_headerCame);
}

void MessageLink::takeBody(SerialPort& port)
{
    if (&port != &m_ports.inUse() || port.inputCount() < m_header.bytesToCome())
        return;
    stopTimer();
    port.setReadLength(m_header.bytesToCome());
    const QByteArray rest = port.read();
    port.setReceiveThreshold(0);

    m_receivedCode = static_cast<quint8>(rest.front());
    m_receivedData = rest.mid(1, m_header.length - 2);
    // The byte after the checksum is the end byte, whatever it is.
    const auto received = static_cast<quint8>(rest[m_header.length - 1]);
    const quint8 expected = frame::checksum(m_header.station, m_receivedCode, m_receivedData);
    const LinkStatus status = received == expected ? LinkStatus::Good : LinkStatus::ChecksumError;
    // Other bytes after a header may be a late echo of a SIM code.
    if (status == LinkStatus::Good)
        qCDebug(linkFrames, "COM%d received %s", port.portNumber(),
                QByteArray(m_header.bytes() + rest).toHex().constData());
    else
        qCDebug(linkFrames, "COM%d received L=%d, wrong checksum", port.portNumber(),
                m_header.length);
    if (deliver(m_receivedCode, m_receivedData, status)) {
        setBusy(false);
        setState(LinkState::Idle);
    }
}

void MessageLink::timerTick()
{
    if (m_ticksLeft >= 1) {
        --m_ticksLeft;
        return;
    }
    stopTimer();
    setBusy(false);
    if (!isModemPhase())
        answerTimedOut();
    else if (m_modemDialogue)
        m_modemDialogue->timedOut();
    else
        leaveModemPhase();
}

void MessageLink::answerTimedOut()
{
    SerialPort& port = m_ports.inUse();
    if (port.isOpen()) {
        port.setReadLength(0);
        m_receivedData = port.read();
    }
    // The code is that of the frame received last, which with status 1 nobody looks at.
    if (deliver(m_receivedCode, m_receivedData, LinkStatus::TimeOut))
        setState(LinkState::Idle);
}

bool MessageLink::deliver(quint8 code, const QByteArray& body, LinkStatus status)
{
    traceAnswer(code, body, status);
    AnswerReceiver* const receiver = std::exchange(m_receiver, nullptr);
    if (!receiver)
        return true;
    const QPointer<MessageLink> self(this);
    const quint32 generation = m_generation;
    // A copy: the receiver may send again, which replaces what was received.
    receiver->Recibido(code, QByteArray(body), status);
    return self && m_generation == generation;
}
