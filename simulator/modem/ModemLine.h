#pragma once

#include "SimCard.h"

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QTimer>

namespace simulator {

/// A GSM modem between the line and the clock. It answers AT commands; during a call it passes the
/// bytes on. A command line longer than 256 characters is cut.
class ModemLine : public QObject {
    Q_OBJECT

public:
    /// How a dialled call ends.
    enum class Dial { Connect, Busy, NoCarrier, NoAnswer, NoDialtone, Error, Silence, Chatter };
    enum class State { Command, Dialling, Call };

    explicit ModemLine(QObject* parent = nullptr);

    State state() const { return m_state; }
    bool isInCall() const { return m_state == State::Call; }
    SimCard& simCard() { return m_simCard; }

    void setEcho(bool on) { m_echo = on; }
    void setSilent(bool on) { m_silent = on; }
    /// Endless text without a line end or a result.
    void setChatter(bool on);
    void setSignal(int value) { m_signal = value; }
    /// `rate` is the number after CONNECT; none with 0.
    void setDial(Dial dial, int rate = 0);
    void setDialDelay(int milliseconds) { m_dialDelay.setInterval(milliseconds); }
    /// Replaces the answer to a command such as "AT+CSQ" by these bytes; empty restores the modem's
    /// own answer.
    void setReply(const QString& command, const QByteArray& reply);
    /// The number dialled last.
    QString dialledNumber() const { return m_number; }

    /// Takes bytes from the line. During a call they are emitted as dataArrived; "+++ATH" ends the
    /// call.
    void take(const QByteArray& bytes);
    /// The far station hangs up: NO CARRIER.
    void hangUp();
    /// The program dropped the line: a call ends without a reply.
    void dropLine();

signals:
    void replied(const QByteArray& bytes);
    void dataArrived(const QByteArray& bytes);
    void callBegan();
    void callEnded();
    /// A complete command line, with PIN and PUK masked.
    void commanded(const QString& text);
    /// The modem's reply to it, in one line.
    void answered(const QString& text);

private:
    void takeCommandByte(char byte);
    void takeCallData(const QByteArray& bytes);
    void obey(const QString& line);
    QByteArray resultOf(const QString& command);
    QByteArray queryResult(const QString& command);
    bool obeyBasics(const QString& basics);
    void dial(const QString& number);
    void finishDialling();
    void reply(const QByteArray& bytes);
    void endCall();

    State m_state = State::Command;
    SimCard m_simCard;
    bool m_echo = true;
    bool m_silent = false;
    int m_signal = 20;
    Dial m_dial = Dial::Connect;
    int m_rate = 9600;
    QString m_number;
    QMap<QString, QByteArray> m_replies;
    QByteArray m_line;
    QByteArray m_callTail;
    QTimer m_dialDelay;
    QTimer m_chatter;
};

} // namespace simulator
