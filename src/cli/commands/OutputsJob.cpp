#include "OutputsJob.h"

#include "ClockDisplay.h"
#include "CommonOptions.h"
#include "Console.h"
#include "Session.h"
#include "StatusBlock.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace {

/// In ticks of the timer service (1 ms): that of the window.
constexpr qint16 period = 3;
constexpr int mostFailuresOfPolls = 3;

/// Between the number of an output and its bit. The windows show the last bit in the row "Avisos
/// 1".
constexpr int bitOf(int number) { return RemoteControl::outputCount - number; }

} // namespace

OutputsJob::OutputsJob(Session& session, Console& console, const CommonOptions& options,
                       const Wish& wish)
    : m_session(session),
      m_console(console),
      m_options(options),
      m_wish(wish),
      m_control(session.link(),
                wish.action == Action::Switch &&
                    StatusBlock(session.globais().GeneralData).isRemoteControlled()),
      m_registration(session.crono(), m_control, period)
{
    connect(&m_control, &RemoteControl::stateRead, this, &OutputsJob::stateRead);
    connect(&m_control, &RemoteControl::requestFailed, this, &OutputsJob::requestFailed);
}

void OutputsJob::begin()
{
    if (m_wish.action == Action::Show)
        showState();
    else
        m_registration.ActivaCliente();
}

QString OutputsJob::abandon()
{
    m_control.stop();
    if (m_wish.action != Action::GiveBack && !m_switching) {
        const QString untouched = u"No se ha conmutado ninguna salida."_s;
        const bool manual = StatusBlock(m_session.globais().GeneralData).isRemoteControlled();
        return manual ? untouched + u' ' + manualWarning() : untouched;
    }
    return u"El reloj puede %1 en modo manual"_s.arg(m_switching ? u"haber quedado"_s
                                                                 : u"seguir"_s) +
           automaticAdvice();
}

QString OutputsJob::automaticAdvice() const
{
    return u"; para volver al automático: "_s + m_options.commandLine(u"outputs auto"_s);
}

QString OutputsJob::manualWarning() const
{
    return u"El reloj queda en modo manual y no sigue su programa"_s + automaticAdvice();
}

void OutputsJob::showState()
{
    const StatusBlock block(m_session.globais().GeneralData);
    const ClockDisplay display(block);
    States states{};
    for (int number = 1; number <= RemoteControl::outputCount; ++number)
        states.at(static_cast<std::size_t>(number - 1)) = display.isOutputOn(bitOf(number));
    tell(block.isRemoteControlled(), states);
    finish(ExitStatus::Done);
}

void OutputsJob::stateRead(quint8 restBits)
{
    if (m_wish.action == Action::Switch && !m_switching)
        return beginSwitching();
    States states{};
    bool isAsWished = true;
    for (int number = 1; number <= RemoteControl::outputCount; ++number) {
        // A set bit is an output that is off.
        const bool on = (restBits >> bitOf(number) & 1) == 0;
        states.at(static_cast<std::size_t>(number - 1)) = on;
        const auto wished = m_wish.positions.find(number);
        isAsWished &= wished == m_wish.positions.end() || wished->second == on;
    }
    tell(m_switching, states);
    if (!isAsWished)
        m_console.tell(
            u"El reloj no ha conmutado las salidas como se le ha pedido: si al repetir la "
            "orden sigue igual, avise al servicio técnico."_s);
    finish(isAsWished ? ExitStatus::Done : ExitStatus::Refused);
}

void OutputsJob::beginSwitching()
{
    m_switching = true;
    m_control.setManual(true);
    for (const auto& [number, on] : m_wish.positions)
        m_control.setPosition(bitOf(number), on ? 1 : 0);
}

void OutputsJob::requestFailed(LinkStatus status)
{
    if (++m_failures < mostFailuresOfPolls)
        return;
    const ExitStatus exitStatus = exitStatusOf(status);
    const QString reason =
        exitStatus == ExitStatus::Refused
            ? u"El reloj no acepta la orden para sus salidas: si al repetirla sigue "
              "igual, avise al servicio técnico."_s
            : u"El reloj ha dejado de contestar: compruebe el cable."_s;
    m_console.tell(reason + u' ' + abandon());
    finish(exitStatus);
}

void OutputsJob::tell(bool manual, const States& states)
{
    QJsonArray outputs;
    QStringList lines{u"Modo:     "_s + (manual ? u"manual"_s : u"automático"_s)};
    for (int number = 1; number <= RemoteControl::outputCount; ++number) {
        const bool on = states.at(static_cast<std::size_t>(number - 1));
        outputs += on;
        lines +=
            u"Avisos %1: %2"_s.arg(QString::number(number), on ? u"encendido"_s : u"apagado"_s);
    }
    m_console.print({{u"mode"_s, manual ? u"manual"_s : u"automatic"_s}, {u"outputs"_s, outputs}},
                    lines.join(u'\n'));
    if (manual)
        m_console.tell(manualWarning());
}

void OutputsJob::finish(ExitStatus status)
{
    m_control.stop();
    emit finished(status);
}
