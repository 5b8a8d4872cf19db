#include "ModemControl.h"

#include "CommSettings.h"
#include "MessageLink.h"
#include "ModemReplies.h"
#include "SerialPort.h"
#include "Wipe.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

const QString portNotOpened = u"No se ha podido abrir el puerto serie"_s;

} // namespace

ModemControl::ModemControl(MessageLink& link, SerialPort& commModem, const CommSettings& settings,
                           QObject* parent)
    : QObject(parent),
      m_link(link),
      m_commModem(commModem),
      m_settings(settings),
      m_transcript([this](const QString& text) { emit terminalWritten(text); })
{
    m_link.setModemDialogue(this);
    // Later: a port may find its device gone in the midst of the sending of a command.
    connect(&m_commModem, &SerialPort::lost, this, &ModemControl::portLost, Qt::QueuedConnection);
}

ModemControl::~ModemControl() { m_link.setModemDialogue(nullptr); }

bool ModemControl::ensureModemPort()
{
    if (m_link.OpenModemPort())
        return true;
    m_transcript.writeLine(portNotOpened);
    return false;
}

void ModemControl::checkPin() { query(LinkState::PinQuery, modemcommands::queryPin()); }

void ModemControl::querySignal() { query(LinkState::SignalQuery, modemcommands::querySignal()); }

void ModemControl::query(LinkState phase, const modemcommands::Command& command)
{
    if (!m_link.isModemPhase() && ensureModemPort())
        begin(phase, command);
}

void ModemControl::type(const QByteArray& characters)
{
    if (!m_link.isModemPhase() && !m_link.Ocupado() && ensureModemPort())
        SendCommand(modemcommands::typed(characters));
}

void ModemControl::sendPin(const QByteArray& pin, const QByteArray& puk)
{
    if (m_link.isModemPhase() || pin.isEmpty() || !ensureModemPort())
        return;
    modemcommands::Command command = modemcommands::enterPin(pin, puk);
    begin(LinkState::PinSent, command);
    wipe(command.text);
}

void ModemControl::executeScript()
{
    if (m_link.isModemPhase() || !ensureModemPort())
        return;
    ask(Question::Script);
    emit scriptWanted();
}

void ModemControl::runScript(const QString& path)
{
    if (path.isEmpty()) {
        takeAnswer(Question::Script);
        return;
    }
    ModemScript script;
    script.open(path);
    runScript(script);
}

void ModemControl::runScript(const ModemScript& script)
{
    if (!takeAnswer(Question::Script) || !ensureModemPort() || !m_script.begin(script))
        return;
    enterPhase(LinkState::ScriptCommand);
    nextScriptLine();
}

void ModemControl::start()
{
    if (m_settings.modemInitialisation.isEmpty()) {
        enterPhase(LinkState::Initialisation);
        askNumber();
        return;
    }
    begin(LinkState::Initialisation, modemcommands::initialise(m_settings.modemInitialisation));
}

void ModemControl::dial(const QString& number)
{
    if (!takeAnswer(Question::Number))
        return;
    if (number.isEmpty())
        return finish();
    begin(LinkState::Dialling, modemcommands::dial(number));
    if (!m_commModem.isOpen())
        fail();
}

void ModemControl::acknowledgeBusy()
{
    if (takeAnswer(Question::Busy))
        fail();
}

void ModemControl::acknowledgeFailure()
{
    if (takeAnswer(Question::Failure))
        finish();
}

void ModemControl::received(SerialPort& port)
{
    const QPointer<ModemControl> self(this);
    // Character by character: each is judged in the state that the one before has led to.
    while (port.inputCount() > 0 && m_link.state() <= LinkState::Dialling) {
        port.setReadLength(1);
        take(port.read().front());
        if (!self)
            return;
    }
    m_transcript.flush();
}

void ModemControl::timedOut()
{
    if (!isAsking())
        fail();
}

void ModemControl::ended()
{
    m_question = Question::None;
    m_transcript.end();
    EnableModemControls(true);
}

void ModemControl::enterPhase(LinkState phase)
{
    m_question = Question::None;
    m_link.enterModemPhase(phase);
    EnableModemControls(false);
}

void ModemControl::begin(LinkState phase, const modemcommands::Command& command)
{
    enterPhase(phase);
    SendCommand(command);
}

void ModemControl::SendCommand(const modemcommands::Command& command)
{
    m_response.clear();
    m_commModem.clearOutput();
    m_commModem.setReceiveThreshold(1);
    m_commModem.write(command.text);
    if (command.display.isEmpty())
        m_transcript.sent(command.text);
    else
        m_transcript.AppendToTerminal(command.display);
    if (command.timeout > std::chrono::milliseconds::zero())
        m_link.armTimer(command.timeout);
    else
        m_link.stopTimer();
}

void ModemControl::take(char character)
{
    m_response += m_transcript.received(character, m_link.state() == LinkState::PinSent);
    if (m_response.size() > maximumResponse)
        m_response.remove(0, m_response.size() - maximumResponse);
    if (!isAsking())
        evaluate();
}

void ModemControl::evaluate()
{
    const auto [outcome, line] =
        modemreplies::judge(m_link.state(), m_response, m_script.expected());
    switch (outcome) {
    case modemreplies::Outcome::Awaited: return;
    case modemreplies::Outcome::Succeeded: return succeed(line);
    case modemreplies::Outcome::Failed: return fail();
    case modemreplies::Outcome::Busy:
        m_link.stopTimer();
        ask(Question::Busy);
        emit lineFoundBusy();
        return;
    }
}

void ModemControl::succeed(const QString& line)
{
    m_link.stopTimer();
    m_response.clear();
    if (m_link.state() == LinkState::ScriptCommand)
        return nextScriptLine();
    if (m_link.state() == LinkState::Initialisation)
        return askNumber();
    if (!line.isEmpty())
        m_transcript.writeLine(line);
    finish();
}

void ModemControl::fail()
{
    m_link.stopTimer();
    if (m_link.state() == LinkState::ScriptCommand) {
        m_script.lineFailed(m_response);
        return nextScriptLine();
    }
    ask(Question::Failure);
    emit failed(m_link.state());
}

void ModemControl::nextScriptLine()
{
    if (!m_commModem.isOpen()) {
        m_transcript.writeLine(portNotOpened);
        finish();
    } else if (const auto command = m_script.next()) {
        SendCommand(modemcommands::scriptLine(*command));
    } else {
        finish();
    }
}

void ModemControl::finish()
{
    m_response.clear();
    EnableModemControls(true);
    m_link.leaveModemPhase();
}

void ModemControl::portLost()
{
    if (m_link.isModemPhase() && !isAsking() && !m_commModem.isOpen())
        fail();
}

void ModemControl::askNumber()
{
    ask(Question::Number);
    emit numberWanted();
}

void ModemControl::ask(Question question)
{
    m_question = question;
    // The operator sees what has led to the question before it is asked.
    m_transcript.flush();
}

bool ModemControl::takeAnswer(Question question)
{
    if (m_question != question)
        return false;
    m_question = Question::None;
    return true;
}
