#pragma once

#include "CronoRegistration.h"
#include "DeferredProcess.h"
#include "Exchange.h"
#include "HexFile.h"

#include <QByteArray>
#include <QObject>

class MessageLink;

/// Sends the lines of a loaded image to the clock, one a message, in the table's order. A line is
/// sent on every tick until the clock acknowledges it. Without a connection the transfer waits, and
/// goes on where it was with the next one, whatever clock that leads to: the operator may interrupt
/// it meanwhile.
class FirmwareTransfer : public QObject, public DeferredProcess {
    Q_OBJECT
public:
    enum class State { Idle = 0, Sending = 1 };

    /// Byte 6 of a line's message.
    enum FinalLineFlag : quint8 {
        MoreLinesFollow = 0x00,
        LastLine = 0x01,
        /// The clock erases its memory, resets and drops the connection.
        LastLineThenReset = 0xFF,
    };

    /// `file` outlives this and is not loaded anew while a transfer runs.
    FirmwareTransfer(const HexFile& file, frmCrono& crono, MessageLink& link);

    State state() const { return m_state; }
    /// The line being sent, counted from 0.
    qint16 CurrentLine() const { return m_currentLine; }
    /// Failed acknowledgements since the last good one, across transfers: neither starting nor
    /// giving up resets it.
    qint16 FailCount() const { return m_failCount; }

    /// Whether the last line asks for a reset; counts until that line is sent.
    void setResetAfterwards(bool reset) { m_resetAfterwards = reset; }
    /// From the first line; nothing to do while sending or without lines.
    void start();
    /// Back to idle, whatever is under way.
    void interrupt();
    /// Interrupts, and gives up its place in the timer service for good.
    void leave();

    void ProcesoDiferido() override;

    /// The body that carries a line: selector, count, address (least significant byte first), flag,
    /// data, the plain sum of address and data, and a zero.
    static QByteArray message(const HexLine& line, FinalLineFlag flag);

signals:
    /// `index` counts from 0; `lastAddress` is that of the line's last byte.
    void lineAcknowledged(qint16 index, qint32 lastAddress);
    /// All lines are in the clock.
    void finished();
    /// The sixth acknowledgement in a row failed.
    void failed();

private:
    void SendCurrentLine();
    void mntProgramacion_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void countFailure();
    void advance();
    void becomeIdle();

    const HexFile& m_file;
    MessageLink& m_link;
    Exchange mntProgramacion;
    CronoRegistration m_registration;
    State m_state = State::Idle;
    qint16 m_currentLine = 0;
    qint16 m_failCount = 0;
    bool m_resetAfterwards = false;
};
