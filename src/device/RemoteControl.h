#pragma once

#include "DeferredProcess.h"
#include "Exchange.h"

#include <QObject>

#include <array>

class MessageLink;

/// Switches the clock's outputs by hand or leaves them to its programme, and reads their state. In
/// manual mode it sends command and state read by turns, in automatic mode only state reads, which
/// also tell the clock its mode. What fails is sent again on the next call of ProcesoDiferido.
class RemoteControl : public QObject, public DeferredProcess {
    Q_OBJECT
public:
    enum class NextAction { None = 0, SendCommand = 1, ReadState = 2 };

    static constexpr int outputCount = 3;

    RemoteControl(MessageLink& link, bool manual);

    bool Manual() const { return m_manual; }
    /// Whether a state of the outputs has been read since the start.
    bool StateKnown() const { return m_stateKnown; }
    NextAction nextAction() const { return m_nextAction; }
    /// Of the switch of output `index` (0 to 2): 0 off, 1 on.
    int position(int index) const { return m_positions.at(static_cast<std::size_t>(index)); }
    /// Bit i set while switch i stands at 0; bits 3 to 7 are 0.
    quint8 offMask() const;

    /// The operator changes the mode. Turning to automatic leaves a command that is due as it is.
    void setManual(bool manual);
    /// The operator moves a switch; in automatic mode nothing happens.
    void setPosition(int index, int position);
    void toggle(int index) { setPosition(index, 1 - position(index)); }
    /// Nothing more is sent, and an answer under way reaches nobody.
    void stop();

    void ProcesoDiferido() override;

signals:
    void switchMoved(int index, int position);
    /// Bit i is set while output i is at rest: the opposite of the outputs in the status block.
    void stateRead(quint8 restBits);

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
