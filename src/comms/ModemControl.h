#pragma once

#include "Dialogs.h"
#include "EchoMask.h"
#include "LinkState.h"
#include "ModemDialogue.h"
#include "ModemScript.h"

#include <QByteArray>
#include <QObject>
#include <QString>

class CommSettings;
class MessageLink;
struct modGlobais;

/// Brings a modem from idle to a data call, and talks to it by hand: one AT command at a time, its
/// replies gathered character by character and matched as parts of all that was received since.
///
/// Replies are kept up to maximumResponse characters; of longer ones the oldest are dropped.
class ModemControl final : public QObject, public ModemDialogue {
    Q_OBJECT
public:
    static constexpr qsizetype maximumResponse = 4096;

    ModemControl(MessageLink& link, SerialPort& commModem, const CommSettings& settings,
                 const modGlobais& globais, Dialogs& dialogs, QObject* parent = nullptr);
    ~ModemControl() override;

    // Each of these opens the modem's port where needed, or writes that it cannot be opened. While
    // a command runs they do nothing.

    void checkPin();
    void querySignal();
    /// Asks for a script and runs it.
    void executeScript();
    /// What was typed in the mini terminal goes to the modem. Several characters go as one command:
    /// each command takes back what of the one before has not left yet.
    void type(const QByteArray& characters);
    /// For what asks the operator something before its command.
    bool ensureModemPort();
    /// Sends the PIN, or the PUK and the new PIN. Without a PIN nothing is sent. The caller
    /// overwrites its texts.
    void sendPin(const QByteArray& pin, const QByteArray& puk);

    void start() override;
    void received(SerialPort& port) override;
    void timedOut() override;
    void ended() override;

signals:
    /// Text for the mini terminal; lines end with CR LF.
    void terminalWritten(const QString& text);
    /// Whether the buttons that start a command may be pressed, and the settings accepted.
    void controlsEnabled(bool enabled);

private:
    void begin(LinkState phase, const QByteArray& command, int timeout);
    void SendCommand(const QByteArray& command, const QString& display, int timeout);
    void AppendToTerminal(const QString& text);
    void writeLine(const QString& text);
    void show(const QString& text);
    void flushEcho();
    void EnableModemControls(bool enabled) { emit controlsEnabled(enabled); }

    void take(char character);
    void evaluate();
    void evaluateScript();
    void evaluateInitialisation();
    void evaluatePinSent();
    void evaluatePinQuery();
    void evaluateSignal();
    void evaluateDialling();

    void dial();
    void nextScriptLine();
    void succeed(const QString& line);
    void fail();
    void failScriptLine();
    void finish();
    void portLost();

    /// Whether a box of the current command is up: nothing is judged meanwhile.
    bool isAsking() const { return m_askingFor == m_attempt; }
    /// Runs `ask` as a box of the current command; false when that command is over (or this object
    /// gone) by the time the box has been answered.
    template<typename Ask>
    bool whileAsking(Ask ask);

    MessageLink& m_link;
    SerialPort& m_commModem;
    const CommSettings& m_settings;
    const modGlobais& m_globais;
    Dialogs& m_dialogs;

    QByteArray m_response;
    QByteArray m_expected;
    ModemScript m_script;
    EchoMask m_sentMask;
    EchoMask m_receivedMask;
    /// Shown text not handed to the terminal yet.
    QString m_echo;
    /// Numbers the commands, and the ends of connections.
    quint32 m_attempt = 1;
    quint32 m_askingFor = 0;
};
