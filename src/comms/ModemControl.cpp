#include "ModemControl.h"

#include "AnsiText.h"
#include "CommSettings.h"
#include "MessageLink.h"
#include "SerialPort.h"
#include "Wipe.h"
#include "modGlobais.h"

#include <QDir>
#include <QPointer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int commandTimeOut = 3000;
constexpr int pinTimeOut = 5000;
constexpr int diallingTimeOut = 64000;
constexpr qsizetype echoBatch = 4096;

const QByteArray lineEnd = "\r\n";

QString failureText(LinkState phase)
{
    switch (phase) {
    case LinkState::Initialisation:
        return u"El módem no responde. Revise las conexiones \r\ny la configuración"_s;
    case LinkState::PinSent: return u"El módem no acepta el código PIN/PUK"_s;
    // This text has a full stop and the next has none.
    case LinkState::PinQuery: return u"El módem no responde al comando."_s;
    case LinkState::SignalQuery: return u"El módem no responde al comando"_s;
    case LinkState::Dialling:
        return u"La llamada ha fallado. Compruebe que los parámetros de\r\n"
               "configuración son correctos, que el módem está inicializado\r\n"
               "correctamente, e inténtelo de nuevo"_s;
    case LinkState::Idle:
    case LinkState::ScriptCommand:
    case LinkState::HeaderHunt:
    case LinkState::Body: break;
    }
    return {};
}

/// The number that a text begins with, blanks skipped; nothing when there is none.
std::optional<int> leadingNumber(const QByteArray& text)
{
    const QByteArray trimmed = text.trimmed();
    const auto end =
        std::find_if(trimmed.begin(), trimmed.end(), [](char c) { return c < '0' || c > '9'; });
    bool valid = false;
    const int number = trimmed.left(end - trimmed.begin()).toInt(&valid);
    return valid ? std::optional(number) : std::nullopt;
}

/// "*+CSQ:*,*" CR LF "OK" CR LF, with any text at the stars.
bool isSignalReply(const QByteArray& response)
{
    const QByteArray tail = "\r\nOK\r\n";
    const qsizetype name = response.indexOf("+CSQ:");
    const qsizetype comma = name < 0 ? -1 : response.indexOf(',', name);
    return comma >= 0 && response.endsWith(tail) && comma < response.size() - tail.size();
}

} // namespace

ModemControl::ModemControl(MessageLink& link, SerialPort& commModem, const CommSettings& settings,
                           const modGlobais& globais, Dialogs& dialogs, QObject* parent)
    : QObject(parent),
      m_link(link),
      m_commModem(commModem),
      m_settings(settings),
      m_globais(globais),
      m_dialogs(dialogs)
{
    m_link.setModemDialogue(this);
    // Later: a port may find its device gone in the midst of the sending of a command.
    connect(&m_commModem, &SerialPort::lost, this, &ModemControl::portLost, Qt::QueuedConnection);
}

ModemControl::~ModemControl() { m_link.setModemDialogue(nullptr); }

template<typename Ask>
bool ModemControl::whileAsking(Ask ask)
{
    flushEcho();
    const QPointer<ModemControl> self(this);
    const quint32 attempt = m_attempt;
    m_askingFor = attempt;
    ask();
    if (!self || m_attempt != attempt)
        return false;
    m_askingFor = 0;
    return true;
}

bool ModemControl::ensureModemPort()
{
    if (m_link.OpenModemPort())
        return true;
    writeLine(u"No se ha podido abrir el puerto serie"_s);
    return false;
}

void ModemControl::checkPin()
{
    if (!m_link.isModemPhase() && ensureModemPort())
        begin(LinkState::PinQuery, "AT+CPIN?" + lineEnd, commandTimeOut);
}

void ModemControl::querySignal()
{
    if (!m_link.isModemPhase() && ensureModemPort())
        begin(LinkState::SignalQuery, "AT+CSQ" + lineEnd, commandTimeOut);
}

void ModemControl::type(const QByteArray& characters)
{
    if (!m_link.isModemPhase() && !m_link.Ocupado() && ensureModemPort())
        SendCommand(characters, QString(), 0);
}

void ModemControl::sendPin(const QByteArray& pin, const QByteArray& puk)
{
    if (m_link.isModemPhase() || pin.isEmpty() || !ensureModemPort())
        return;
    QByteArray command;
    // Reserved, so that growing leaves no copy behind.
    command.reserve(pin.size() + puk.size() + 16);
    command.append("AT+CPIN=");
    QString display = u"AT+CPIN="_s;
    if (!puk.isEmpty()) {
        command.append(puk).append(',');
        display += u"********,";
    }
    command.append(pin).append(lineEnd);
    display += u"****";

    ++m_attempt;
    m_link.enterModemPhase(LinkState::PinSent);
    EnableModemControls(false);
    SendCommand(command, display, pinTimeOut);
    wipe(command);
}

void ModemControl::executeScript()
{
    if (m_link.isModemPhase() || !ensureModemPort())
        return;
    FileRequest request;
    request.title = u"Seleccione un archivo de inicialización de módem"_s;
    request.filters = {u"Scripts de inicialización de módem (*.mdm)"_s,
                       u"Todos los archivos (*.*)"_s};
    request.defaultExtension = u"mdm"_s;
    request.directory = m_globais.applicationDirectory + u"Modems"_s + QDir::separator();
    QString path;
    const bool current = whileAsking([&] { path = m_dialogs.openFile(request); });
    if (!current || path.isEmpty() || m_link.isModemPhase() || !ensureModemPort())
        return;
    if (!m_script.open(path)) {
        writeLine(m_script.error());
        return;
    }
    writeLine(u"Inicio archivo de comandos"_s);
    ++m_attempt;
    m_link.enterModemPhase(LinkState::ScriptCommand);
    EnableModemControls(false);
    nextScriptLine();
}

void ModemControl::start()
{
    if (m_settings.modemInitialisation.isEmpty()) {
        ++m_attempt;
        m_link.enterModemPhase(LinkState::Initialisation);
        EnableModemControls(false);
        dial();
        return;
    }
    begin(LinkState::Initialisation,
          AnsiText::fromUnicode(m_settings.modemInitialisation) + lineEnd, commandTimeOut);
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
    flushEcho();
}

void ModemControl::timedOut()
{
    if (!isAsking())
        fail();
}

void ModemControl::ended()
{
    ++m_attempt;
    m_script.close();
    m_response.clear();
    flushEcho();
    m_sentMask = EchoMask();
    m_receivedMask = EchoMask();
    EnableModemControls(true);
}

void ModemControl::begin(LinkState phase, const QByteArray& command, int timeout)
{
    ++m_attempt;
    m_link.enterModemPhase(phase);
    EnableModemControls(false);
    SendCommand(command, QString(), timeout);
}

void ModemControl::SendCommand(const QByteArray& command, const QString& display, int timeout)
{
    m_response.clear();
    m_commModem.clearOutput();
    m_commModem.setReceiveThreshold(1);
    m_commModem.write(command);
    if (display.isEmpty()) {
        QByteArray shown;
        for (const char character : command)
            shown += m_sentMask.take(character, false);
        AppendToTerminal(AnsiText::toUnicode(shown));
    } else {
        AppendToTerminal(display);
    }
    if (timeout > 0)
        m_link.armTimer(timeout);
    else
        m_link.stopTimer();
}

void ModemControl::AppendToTerminal(const QString& text)
{
    flushEcho();
    emit terminalWritten(text);
}

void ModemControl::writeLine(const QString& text)
{
    AppendToTerminal(u"\r\n** "_s + text + u"\r\n"_s);
}

void ModemControl::show(const QString& text)
{
    m_echo += text;
    if (m_echo.size() >= echoBatch)
        flushEcho();
}

void ModemControl::flushEcho()
{
    if (!m_echo.isEmpty())
        emit terminalWritten(std::exchange(m_echo, QString()));
}

void ModemControl::take(char character)
{
    const char shown = m_receivedMask.take(character, m_link.state() == LinkState::PinSent);
    show(AnsiText::toUnicode(QByteArrayView(&shown, 1)));
    // What is shown is what is kept: an echoed code does not stay in the buffer either.
    m_response += shown;
    if (m_response.size() > maximumResponse)
        m_response.remove(0, m_response.size() - maximumResponse);
    if (!isAsking())
        evaluate();
}

void ModemControl::evaluate()
{
    if (!m_link.isModemPhase())
        return;
    if (m_response.contains("ERROR"))
        return fail();
    switch (m_link.state()) {
    case LinkState::ScriptCommand: return evaluateScript();
    case LinkState::Initialisation: return evaluateInitialisation();
    case LinkState::PinSent: return evaluatePinSent();
    case LinkState::PinQuery: return evaluatePinQuery();
    case LinkState::SignalQuery: return evaluateSignal();
    case LinkState::Dialling: return evaluateDialling();
    case LinkState::Idle:
    case LinkState::HeaderHunt:
    case LinkState::Body: return;
    }
}

void ModemControl::evaluateScript()
{
    if (!m_response.contains(m_expected.isEmpty() ? QByteArray("OK") : m_expected))
        return;
    m_link.stopTimer();
    m_response.clear();
    nextScriptLine();
}

void ModemControl::evaluateInitialisation()
{
    if (!m_response.contains("OK"))
        return;
    m_link.stopTimer();
    m_response.clear();
    dial();
}

void ModemControl::evaluatePinSent()
{
    if (m_response.contains("OK"))
        succeed(u"Código PIN/PUK enviado correctamente"_s);
}

void ModemControl::evaluatePinQuery()
{
    if (m_response.contains("+CPIN: READY"))
        succeed(u"No se necesita código PIN"_s);
    else if (m_response.contains("+CPIN: SIM PIN"))
        succeed(u"Debe introducir el PIN"_s);
    else if (m_response.contains("+CPIN: SIM PUK"))
        succeed(u"Debe introducir el código PUK y un nuevo PIN"_s);
}

void ModemControl::evaluateSignal()
{
    if (!isSignalReply(m_response))
        return;
    const auto value = leadingNumber(m_response.mid(m_response.indexOf(':') + 1));
    if (value == 99)
        succeed(u"El módem no tiene cobertura"_s);
    else if (value && *value < 32)
        succeed(u"Nivel de señal %1dBm [-113...-51]"_s.arg(2 * *value - 113));
    else
        finish();
}

void ModemControl::evaluateDialling()
{
    if (m_response.contains("BUSY")) {
        m_link.stopTimer();
        const bool current = whileAsking([this] {
            m_dialogs.tell(Dialogs::Icon::Warning, u"Aviso"_s,
                           u"El módem con el que se intenta contactar está comunicando.\r\n"
                           "Asegúrese de que el número es correcto"_s);
        });
        if (current)
            fail();
    } else if (m_response.contains("CONNECT")) {
        succeed(u"Conexión establecida"_s);
    }
}

void ModemControl::dial()
{
    std::optional<QString> number;
    const bool current = whileAsking([&] {
        number = m_dialogs.askText(u"Introducción de datos"_s, u"Escriba el número de teléfono"_s);
    });
    if (!current)
        return;
    if (!number || number->isEmpty())
        return finish();
    begin(LinkState::Dialling, "ATD" + AnsiText::fromUnicode(*number) + lineEnd, diallingTimeOut);
    if (!m_commModem.isOpen())
        fail();
}

void ModemControl::nextScriptLine()
{
    if (!m_commModem.isOpen()) {
        m_script.close();
        writeLine(u"No se ha podido abrir el puerto serie"_s);
        return finish();
    }
    while (const auto line = m_script.next()) {
        if (line->tooLong) {
            writeLine(u"Línea demasiado larga: no se envía"_s);
            continue;
        }
        if (line->isComment()) {
            show(line->comment + u"\r\n"_s);
            continue;
        }
        m_expected = line->expected;
        SendCommand(line->command + lineEnd, QString(), commandTimeOut);
        return;
    }
    m_script.close();
    writeLine(u"Fin de archivo de comandos"_s);
    finish();
}

void ModemControl::succeed(const QString& line)
{
    m_link.stopTimer();
    writeLine(line);
    finish();
}

void ModemControl::fail()
{
    m_link.stopTimer();
    const LinkState phase = m_link.state();
    if (phase == LinkState::ScriptCommand)
        return failScriptLine();
    const bool current = whileAsking(
        [&] { m_dialogs.tell(Dialogs::Icon::Critical, u"Error"_s, failureText(phase)); });
    if (current)
        finish();
}

void ModemControl::failScriptLine()
{
    if (!m_expected.isEmpty())
        writeLine(m_response.isEmpty() ? u"Comando no reconocido"_s : u"Respuesta incorrecta"_s);
    m_response.clear();
    nextScriptLine();
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
