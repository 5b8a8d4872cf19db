#include "Connection.h"

#include "NetworkAddress.h"
#include "SerialPort.h"
#include "StatusBlock.h"

#include <utility>

using namespace Qt::StringLiterals;

Connection::Connection(Session& session, const QString& number, std::chrono::seconds patience)
    : m_session(session), m_throughModem(!number.isEmpty()), m_call(session.modem(), number)
{
    // Before the signals are connected: it tells that there is no connection.
    session.start();
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &Connection::patienceEnded);
    connect(&m_call, &ModemCall::failed, this, &Connection::fail);
    ConnectionWorkflow& workflow = session.workflow();
    connect(&workflow, &ConnectionWorkflow::identificationFailed, this,
            [this](LinkStatus status) { m_lastIdentification = status; });
    connect(&workflow, &ConnectionWorkflow::generalDataFailed, this,
            [this](LinkStatus status) { m_lastGeneralData = status; });
    connect(&workflow, &ConnectionWorkflow::generalDataReceived, this,
            &Connection::generalDataReceived);
    // Later: the workflow and the link are in the midst of taking the connection down.
    connect(
        &workflow, &ConnectionWorkflow::connectionStatusChanged, this,
        [this](bool connected) {
            if (!connected)
                attemptEnded();
        },
        Qt::QueuedConnection);
    for (SerialPort* port : {&session.environment().commSerie, &session.environment().commModem})
        connect(
            port, &SerialPort::lost, this, [this, port] { portLost(*port); }, Qt::QueuedConnection);
}

void Connection::open()
{
    // The call is made within the attempt. The opening of a port has its own end, with its own
    // reasons.
    if (m_throughModem)
        m_patience.start();
    attempt();
    if (!m_throughModem && !m_over)
        m_patience.start();
}

void Connection::attempt()
{
    m_session.workflow().Conectar(m_throughModem);
    if (m_over)
        return;
    const SerialPort& port =
        m_throughModem ? m_session.link().modemPort() : m_session.link().directPort();
    if (!port.isOpen())
        fail(ExitStatus::Port,
             port.openError() +
                 (m_throughModem ? u" El puerto y la línea del módem se eligen con hct."_s
                                 : u" Otro puerto u otra línea se indican con --port y --line; los "
                                   "puertos se ven con: hctctl ports"_s));
}

void Connection::attemptEnded()
{
    if (m_over)
        return;
    if (m_established)
        return fail(ExitStatus::Silent,
                    u"El reloj ha dejado de contestar: compruebe el cable y que el reloj tiene "
                    "corriente."_s);
    if (m_throughModem || m_lastIdentification == LinkStatus::WrongAnswer)
        return failUnreached();
    if (!std::exchange(m_unanswered, true))
        emit unanswered(device());
    attempt();
}

void Connection::generalDataReceived()
{
    if (m_established || m_over)
        return;
    const int type = m_session.globais().DeviceType;
    if (type != StatusBlock::familyType)
        return fail(ExitStatus::Refused,
                    u"El equipo que contesta no es un HCT-7200 ni un HCT-7300 (es de tipo %1): "
                    "compruebe el puerto y la estación."_s.arg(type));
    m_established = true;
    m_patience.stop();
    emit established();
}

void Connection::patienceEnded() { failUnreached(); }

void Connection::failUnreached()
{
    switch (m_lastIdentification) {
    case LinkStatus::WrongAnswer:
    case LinkStatus::Refused:
        return fail(ExitStatus::Refused,
                    u"El reloj no acepta el número de identificación %1: indique el suyo con "
                    "--identification."_s.arg(m_session.link().identificacion()));
    case LinkStatus::ChecksumError:
        return fail(
            ExitStatus::Silent,
            u"Las respuestas llegan dañadas por %1: compruebe el cable y la velocidad."_s.arg(
                device()));
    case LinkStatus::Good:
    case LinkStatus::TimeOut:
    case LinkStatus::ConnectionOver:
    case LinkStatus::PortClosed: break;
    }
    if (exitStatusOf(m_lastGeneralData) == ExitStatus::Refused)
        return fail(
            ExitStatus::Refused,
            u"El equipo contesta, pero no da sus datos generales: compruebe que es un HCT-7200 "
            "o un HCT-7300."_s);
    if (m_throughModem)
        return fail(
            ExitStatus::Silent,
            u"Nadie contesta a la llamada: compruebe el número, la cobertura y que el reloj "
            "tiene corriente."_s);
    fail(ExitStatus::Silent,
         u"Nadie contesta por %1: compruebe el cable, que el reloj tiene corriente, la velocidad y "
         "la estación (%2)."_s.arg(device())
             .arg(m_session.link().estacion()));
}

void Connection::portLost(const SerialPort& port)
{
    const QString device = port.deviceName();
    fail(
        ExitStatus::Port,
        NetworkAddress::isMeantBy(device)
            ? u"Se ha perdido el puerto %1: compruebe la red y repita la orden."_s.arg(device)
            : u"Se ha perdido el puerto %1: compruebe que el adaptador está conectado y repita la orden."_s
                  .arg(device));
}

void Connection::fail(ExitStatus status, const QString& reason)
{
    if (m_over)
        return;
    m_over = true;
    m_patience.stop();
    // Later: the caller may be one of the classes that are taken down then.
    QMetaObject::invokeMethod(
        this, [this, status, reason] { emit failed(status, reason); }, Qt::QueuedConnection);
}

QString Connection::device() const
{
    return (m_throughModem ? m_session.link().modemPort() : m_session.link().directPort())
        .deviceName();
}
