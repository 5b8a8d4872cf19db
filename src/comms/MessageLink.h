#pragma once

#include "Frame.h"
#include "LinkPorts.h"
#include "LinkState.h"
#include "LinkStatus.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <chrono>

class AnswerReceiver;
class CommSettings;
class IntervalTimer;
class ModemDialogue;
class Pause;
class SerialPort;

/// Carries one request and its one answer between the program and a clock, over the direct port or
/// over the modem's once a call is up. Half duplex, no retries: those are the callers'.
///
/// Two ports and one timer, handed in; the settings are read at the moment of use.
class MessageLink : public QObject {
    Q_OBJECT
public:
    MessageLink(SerialPort& commSerie, SerialPort& commModem, IntervalTimer& tmrTemporizador,
                Pause& pause, const CommSettings& settings, QObject* parent = nullptr);

    /// Makes `receiver` the one that gets the answer to the next request, in place of the one
    /// before. It is released when its answer has come, or the connection has ended.
    void bind(AnswerReceiver& receiver) { m_receiver = &receiver; }
    /// Does nothing when another receiver is bound.
    void release(const AnswerReceiver& receiver);
    bool isBound(const AnswerReceiver& receiver) const { return m_receiver == &receiver; }

    /// Sends a request; the answer comes to the bound receiver, within this call with status 11
    /// when the port is closed. `body` is cut to 509 bytes. `timeout` in milliseconds; 0 is
    /// replaced by the time that the line's speed asks for, which is written back. A multiple of
    /// 32768 never ends; see armTimer.
    void Envia(quint8 code, QByteArray& body, qint32& timeout);
    /// From the sending of a request until its answer is delivered, its time is out or the
    /// connection has ended. The modem's command phases do not count.
    bool Ocupado() const { return m_busy; }

    /// Station address and identification number of the settings; a text that is no number from 0
    /// to 255 counts as 0.
    quint8 estacion() const;
    quint8 identificacion() const;

    /// Opens the port, and with `throughModem` dials: where the port is at the far end of a
    /// network, and while dialling, it lets events run until that has ended, and must not be
    /// deleted by them. A call while another is under way does nothing; so ask isStarting before.
    void ArrancaConexion(bool throughModem);
    /// Ends the connection: both ports closed, nothing awaited, no receiver bound. It also ends an
    /// ArrancaConexion that is under way, which then returns to its caller.
    void RemataConexion();
    /// Whether a port is being opened or a modem dials (somewhere below on the stack).
    bool isStarting() const { return m_starting || m_ports.isOpening(); }
    /// From an ArrancaConexion until RemataConexion, whatever becomes of the port in between.
    bool isConnected() const { return m_connected; }

    LinkState state() const { return m_state; }
    /// A command phase of the modem: no request may be sent meanwhile.
    bool isModemPhase() const;

    /// How long ago the header of the last answer came. The rest of a long answer takes seconds on
    /// a slow line.
    std::chrono::milliseconds sinceHeader() const;

    /// Whether no request may be sent now: one awaits its answer, the modem has the line, or a port
    /// waits for its far end.
    bool isOccupied() const { return Ocupado() || isModemPhase() || m_ports.isOpening(); }

    /// Puts the settings into the two ports; reopens the one in use if either was open.
    void ApplySettings() { m_ports.ApplySettings(); }
    const SerialPort& directPort() const { return m_ports.direct(); }
    const SerialPort& modemPort() const { return m_ports.modem(); }

    // What the modem's side of the communications needs of the link.

    void setModemDialogue(ModemDialogue* dialogue) { m_modemDialogue = dialogue; }
    /// Opens the modem's port unless it is open, and makes it the one in use; whether it is open.
    bool OpenModemPort() { return m_ports.borrowModem(); }
    /// Back to the kind of connection in force before OpenModemPort borrowed the port.
    void restoreConnectionType() { m_ports.giveModemBack(); }
    /// Enters a command phase (1 to 6); a request still awaiting its answer is forgotten.
    void enterModemPhase(LinkState phase);
    /// Back to idle, with the timer stopped.
    void leaveModemPhase();
    /// Starts the time-out of a command phase or an answer. The timer's interval is `time` modulo
    /// 32768 ms, and the time-out comes after `time` / 32768 + 1 ticks of it. So 40000 ms end after
    /// two ticks of 7232 ms, and a multiple of 32768 ms never ends. One that ends comes later by
    /// what the port in use allows for its far end.
    void armTimer(std::chrono::milliseconds time);
    void stopTimer();

signals:
    /// The port in use ("COM1,9600,N,8,1", empty for none) and, as a tool tip, its device or why it
    /// could not be opened.
    void VisualizaPorto(const QString& text, const QString& toolTip);
    /// `isOccupied` has changed.
    void occupationChanged();
    /// The link state has come back to 0.
    void becameIdle();
    /// A connection is over and will not answer any more. It is still being taken down around the
    /// receiver: what asks the operator must wait until that has returned.
    void connectionEnded();

private:
    void forgetRequest();
    void setBusy(bool busy);
    void setState(LinkState state);
    void tellOccupation();
    void waitWhileDialling();
    std::chrono::milliseconds answerTime() const;

    void portReceived(SerialPort& port);
    void huntHeader(SerialPort& port);
    void takeBody(SerialPort& port);
    void timerTick();
    void answerTimedOut();
    /// Hands the answer to the bound receiver, which is released first. False when the link has
    /// gone on to something else (or is gone itself) by the time the receiver returns.
    bool deliver(quint8 code, const QByteArray& body, LinkStatus status);

    LinkPorts m_ports;
    IntervalTimer& m_timer;
    Pause& m_pause;
    const CommSettings& m_settings;
    ModemDialogue* m_modemDialogue = nullptr;

    AnswerReceiver* m_receiver = nullptr;
    LinkState m_state = LinkState::Idle;
    bool m_busy = false;
    bool m_toldOccupied = false;
    bool m_toggle = false;
    bool m_starting = false;
    bool m_connected = false;
    frame::HeaderHunter m_hunter;
    frame::Header m_header;
    std::chrono::steady_clock::time_point m_headerCame;
    quint8 m_receivedCode = 0;
    QByteArray m_receivedData;
    /// Ticks of the timer that go before the one that ends the wait.
    qint64 m_ticksLeft = 0;
    /// Counts what begins and ends, so that what follows a handler's return can tell whether the
    /// request it belongs to is still the current one.
    quint32 m_generation = 0;
};
