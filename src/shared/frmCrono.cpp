#include "frmCrono.h"

#include <algorithm>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 never = std::numeric_limits<qint64>::max();

/// The ticks until the client is called; 1 is the next tick.
qint64 ticksToCall(const clsCliente& client) { return std::max(client.Period - client.Ticks, 1); }

} // namespace

frmCrono::frmCrono(TickTimer& tmrCrono, const modGlobais& globais, std::function<bool()> ocupado,
                   QObject* parent)
    : QObject(parent), m_timer(tmrCrono), m_globais(globais), m_ocupado(std::move(ocupado))
{
    connect(&m_timer, &TickTimer::wake, this, &frmCrono::tick);
}

qint16 frmCrono::EngadeCliente(DeferredProcess& client, qint16 period)
{
    const Change change(*this);
    const qint16 atLeastOne = std::max<qint16>(period, 1);
    for (int attempt = 0; attempt <= std::numeric_limits<quint16>::max(); ++attempt) {
        m_lastId = static_cast<qint16>(m_lastId + 1);
        if (m_lastId != 0 && m_clients.Add(atLeastOne, &client, key(m_lastId)))
            return m_lastId;
    }
    return 0;
}

void frmCrono::EliminaCliente(qint16 id)
{
    const Change change(*this);
    m_clients.Remove(key(id));
}

void frmCrono::ActivaCliente(qint16 id)
{
    const Change change(*this);
    if (clsCliente* record = m_clients.Item(key(id)))
        record->Active = true;
}

void frmCrono::DesactivaCliente(qint16 id)
{
    const Change change(*this);
    if (clsCliente* record = m_clients.Item(key(id)))
        record->Active = false;
}

void frmCrono::CambiaPeriodo(qint16 id, qint16 period)
{
    const Change change(*this);
    if (clsCliente* record = m_clients.Item(key(id)))
        record->Period = period;
}

void frmCrono::setTimerEnabled(bool enabled)
{
    const bool permitted = enabled && !m_globais.ShuttingDown;
    if (m_ticking) {
        m_enabledAfterTick = permitted;
        return;
    }
    const Change change(*this);
    if (permitted && !m_timer.isEnabled())
        m_counted = m_timer.now();
    m_timer.setEnabled(permitted);
}

void frmCrono::ocupadoChanged() { const Change change(*this); }

void frmCrono::tick()
{
    // Ticks beyond the one that was due came too late: they count as one with it.
    visitSilently(m_due - m_counted - 1);
    m_timer.setEnabled(false);
    m_ticking = true;
    m_enabledAfterTick = true;
    visitClients();
    m_ticking = false;
    m_counted = m_timer.now();
    m_timer.setEnabled(m_enabledAfterTick && !m_globais.ShuttingDown);
    planNextCall();
}

void frmCrono::visitClients()
{
    if (m_ocupado())
        return;
    const int count = m_clients.Count();
    for (int remaining = count; remaining > 0; --remaining) {
        if (++m_cursor > count)
            m_cursor = 1;
        clsCliente* record = m_clients.Item(m_cursor);
        // A call may have removed clients: the positions after them moved up.
        if (!record || !record->Active)
            continue;
        ++record->Ticks;
        if (record->Ticks < record->Period)
            continue;
        record->Ticks = 0;
        record->Client->ProcesoDiferido();
        if (m_ocupado())
            return;
    }
}

void frmCrono::countSilentTicks()
{
    if (!m_timer.isEnabled())
        return;
    const qint64 now = m_timer.now();
    const bool isLate = now >= m_due;
    if (!m_wasBusy)
        visitSilently((isLate ? m_due - 1 : now) - m_counted);
    // A tick that is due, and on which nobody has been called yet, is still to come.
    m_counted = isLate ? now - 1 : now;
}

void frmCrono::visitSilently(qint64 times)
{
    const int count = m_clients.Count();
    if (times < 1 || count < 1)
        return;
    for (const auto& record : m_clients)
        if (record->Active)
            record->Ticks = static_cast<qint16>(record->Ticks + times);
    // A visit to all comes back to where it began, unless it began outside the positions.
    if (m_cursor < 1 || m_cursor > count)
        m_cursor = count;
}

void frmCrono::planNextCall()
{
    if (m_ticking)
        return;
    qint64 ticks = never;
    m_wasBusy = m_ocupado();
    for (const auto& record : m_clients)
        if (record->Active && !m_wasBusy)
            ticks = std::min(ticks, ticksToCall(*record));
    m_due = ticks == never ? never : m_counted + ticks;
    if (m_due == never)
        m_timer.sleep();
    else
        m_timer.wakeAt(m_due);
}

QString frmCrono::key(qint16 id)
{
    const QString digits = QString::number(qAbs(static_cast<int>(id))).rightJustified(4, u'0');
    return (id < 0 ? u"X-"_s : u"X"_s) + digits;
}
