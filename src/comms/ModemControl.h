#pragma once

#include "LinkState.h"
#include "ModemCommands.h"
#include "ModemDialogue.h"
#include "ModemScriptRun.h"
#include "ModemTranscript.h"

#include <QByteArray>
#include <QObject>
#include <QString>

class CommSettings;
class MessageLink;

/// Initialises a modem and dials, and runs the commands of the communications settings and of the
/// mini terminal. One AT command runs at a time. With each character received, all that the modem
/// has replied to the command is judged again. At most maximumResponse characters of a reply are
/// kept; the oldest are dropped.
///
/// What it cannot decide it asks by a signal, and continues when the answer is called, within the
/// signal or later. Until then replies are shown but not judged, and no time-out runs. The end of
/// the connection, or another command, cancels the question, and an answer that is not awaited is
/// ignored. Only the newest question can be answered.
class ModemControl final : public QObject, public ModemDialogue {
    Q_OBJECT
public:
    static constexpr qsizetype maximumResponse = 4096;

    ModemControl(MessageLink& link, SerialPort& commModem, const CommSettings& settings,
                 QObject* parent = nullptr);
    ~ModemControl() override;

    // Each of these opens the modem's port where needed, or writes that it cannot be opened. While
    // a command runs they do nothing.

    void checkPin();
    void querySignal();
    /// Asks for a script (scriptWanted) and runs it.
    void executeScript();
    /// What was typed in the mini terminal goes to the modem. Several characters go as one command:
    /// each command takes back what of the one before has not left yet.
    void type(const QByteArray& characters);
    /// For a caller that asks the operator for something before it starts the command.
    bool ensureModemPort();
    /// Sends the PIN, or the PUK and the new PIN. Without a PIN nothing is sent. The caller
    /// overwrites its texts.
    void sendPin(const QByteArray& pin, const QByteArray& puk);

    // The answers.

    /// To numberWanted; an empty number ends the attempt.
    void dial(const QString& number);
    /// To lineFoundBusy; the call then fails.
    void acknowledgeBusy();
    /// To failed; the command is over then.
    void acknowledgeFailure();
    /// To scriptWanted; an empty path runs none. A script that cannot be read is told in the
    /// terminal.
    void runScript(const QString& path);
    /// The same with a script that has been read.
    void runScript(const ModemScript& script);

    void start() override;
    void received(SerialPort& port) override;
    void timedOut() override;
    void ended() override;

signals:
    /// Text for the mini terminal; lines end with CR LF. No SIM code is ever in it.
    void terminalWritten(const QString& text);
    /// Whether the buttons that start a command may be pressed, and the settings accepted.
    void controlsEnabled(bool enabled);

    // The questions. Whoever receives them may destroy the sender.

    /// The modem is initialised: which number is to be called?
    void numberWanted();
    /// The number called is engaged.
    void lineFoundBusy();
    /// The command of `phase` (2 to 6) was refused, or its time is out, or the port was lost. The
    /// lines of a script do not fail so.
    void failed(LinkState phase);
    /// Which file (*.mdm) is to be run?
    void scriptWanted();

private:
    enum class Question { None, Script, Number, Busy, Failure };

    void enterPhase(LinkState phase);
    void query(LinkState phase, const modemcommands::Command& command);
    void begin(LinkState phase, const modemcommands::Command& command);
    void SendCommand(const modemcommands::Command& command);
    void EnableModemControls(bool enabled) { emit controlsEnabled(enabled); }

    void take(char character);
    void evaluate();
    void succeed(const QString& line);
    void fail();
    void nextScriptLine();
    void finish();
    void portLost();

    void askNumber();
    bool isAsking() const { return m_question != Question::None; }
    void ask(Question question);
    /// Whether an answer to `question` is awaited; it is so no longer.
    bool takeAnswer(Question question);

    MessageLink& m_link;
    SerialPort& m_commModem;
    const CommSettings& m_settings;

    ModemTranscript m_transcript;
    /// Of SIM codes it keeps what is shown of them.
    QByteArray m_response;
    ModemScriptRun m_script{m_transcript};
    Question m_question = Question::None;
};
