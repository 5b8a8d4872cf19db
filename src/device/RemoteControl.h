#pragma once

#include "DeferredProcess.h"
#include "Exchange.h"

#include <QObject>

#include <array>

class MessageLink;

/// Switches the clock's outputs by hand or leaves them to its programme, and reads their state. In
/// manual mode it sends commands and state reads alternately, in automatic mode only state reads. A
/// state read also tells the clock its mode. After a failure the next call of ProcesoDiferido sends
/// the same request again.
class RemoteControl : public QObject, public DeferredProcess {
    Q_OBJECT
public:
    enum class NextAction { None = 0, SendCommand = 1, ReadState = 2 };

    static constexpr int outputCount = 3;

    RemoteControl(MessageLink& link, bool manual);

    bool Manual() const { return m_manual; }
    /// Whether the state of the outputs has been read since construction.
    bool StateKnown() const { return m_stateKnown; }
    NextAction nextAction() const { return m_nextAction; }
    /// The position of the switch of output `index` (0 to 2): 0 off, 1 on.
    int position(int index) const { return m_positions.at(static_cast<std::size_t>(index)); }
    /// Bit i (0 to 2) is set while switch i is at 0. Bits 3 to 7 are 0.
    quint8 offMask() const;

    /// The operator changes the mode. A command that is due is still sent after a change to
    /// automatic.
    void setManual(bool manual);
    /// The operator moves a switch; in automatic mode nothing happens.
    void setPosition(int index, int position);
    void toggle(int index) { setPosition(index, 1 - position(index)); }
    /// Sends nothing more and ignores an answer that is still to come.
    void stop();

    void ProcesoDiferido() override;

signals:
    void switchMoved(int index, int position);
    /// Bit i is set while output i is off: the opposite of the outputs in the status block.
    void stateRead(quint8 restBits);
    /// A request was not answered, or not accepted. It is sent again.
    void requestFailed(LinkStatus status);

private:
    void sendCommand();
    void sendStateRead();
    void mntTelemando_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void mntLectEstadoSaidas_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void place(int index, int position);

    MessageLink& m_link;
    Exchange mntTelemando;
    Exchange mntLectEstadoSaidas;
    bool m_manual;
    bool m_stateKnown = false;
    NextAction m_nextAction = NextAction::ReadState;
    std::array<int, outputCount> m_positions{};
};
