#pragma once

#include "CronoRegistration.h"
#include "DeferredProcess.h"
#include "Exchange.h"
#include "HexFile.h"

#include <QByteArray>
#include <QObject>

class MessageLink;

/// Sends the lines of a loaded image to the clock, one in each request, in their order. A line is
/// sent again on the next idle tick until the clock acknowledges it. Without a connection the
/// transfer waits, and continues with the next connection, whichever clock that is. The operator
/// may interrupt it meanwhile.
class FirmwareTransfer : public QObject, public DeferredProcess {
    Q_OBJECT
public:
    enum class State { Idle = 0, Sending = 1 };

    /// Byte 6 of a line's body.
    enum FinalLineFlag : quint8 {
        MoreLinesFollow = 0x00,
        LastLine = 0x01,
        /// The clock erases its memory, resets, and the connection is lost.
        LastLineThenReset = 0xFF,
    };

    /// `file` must outlive this and must not be loaded again during a transfer.
    FirmwareTransfer(const HexFile& file, frmCrono& crono, MessageLink& link);

    State state() const { return m_state; }
    /// The line being sent, counted from 0.
    qint16 CurrentLine() const { return m_currentLine; }
    /// Failed acknowledgements since the last good one. Neither starting nor giving up resets it.
    qint16 FailCount() const { return m_failCount; }
    /// How the latest failed acknowledgement failed.
    LinkStatus lastFailure() const { return m_lastFailure; }

    /// Whether the last line asks for a reset. Takes effect until that line is sent.
    void setResetAfterwards(bool reset) { m_resetAfterwards = reset; }
    /// Begins with the first line. Does nothing during a transfer or without lines.
    void start();
    /// Ends the transfer, if there is one.
    void interrupt();
    /// Ends the transfer and leaves the timer service for good.
    void leave();

    void ProcesoDiferido() override;

    /// The body for a line, Count + 9 bytes: selector 0xDD, count, four bytes of address (least
    /// significant first), flag, data, the 8-bit sum of address and data bytes, and 0x00.
    static QByteArray message(const HexLine& line, FinalLineFlag flag);

signals:
    /// `index` counts from 0; `lastAddress` is that of the line's last byte.
    void lineAcknowledged(qint16 index, qint32 lastAddress);
    /// The clock has acknowledged all lines.
    void finished();
    /// The transfer has ended because FailCount has reached six.
    void failed();

private:
    void SendCurrentLine();
    void mntProgramacion_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void countFailure(LinkStatus status);
    void advance();
    void becomeIdle();

    const HexFile& m_file;
    MessageLink& m_link;
    Exchange mntProgramacion;
    CronoRegistration m_registration;
    State m_state = State::Idle;
    qint16 m_currentLine = 0;
    qint16 m_failCount = 0;
    LinkStatus m_lastFailure = LinkStatus::Good;
    bool m_resetAfterwards = false;
};
