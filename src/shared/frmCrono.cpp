#include "frmCrono.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

frmCrono::frmCrono(IntervalTimer& tmrCrono, const modGlobais& globais,
                   std::function<bool()> ocupado, QObject* parent)
    : QObject(parent), m_timer(tmrCrono), m_globais(globais), m_ocupado(std::move(ocupado))
{
    connect(&m_timer, &IntervalTimer::tick, this, &frmCrono::tick);
}

qint16 frmCrono::EngadeCliente(DeferredProcess& client, qint16 period)
{
    const qint16 atLeastOne = std::max<qint16>(period, 1);
    for (int attempt = 0; attempt <= std::numeric_limits<quint16>::max(); ++attempt) {
        m_lastId = static_cast<qint16>(m_lastId + 1);
        if (m_lastId != 0 && m_clients.Add(atLeastOne, &client, key(m_lastId)))
            return m_lastId;
    }
    return 0;
}

void frmCrono::EliminaCliente(qint16 id) { m_clients.Remove(key(id)); }

void frmCrono::ActivaCliente(qint16 id)
{
    if (clsCliente* record = m_clients.Item(key(id)))
        record->Active = true;
}

void frmCrono::DesactivaCliente(qint16 id)
{
    if (clsCliente* record = m_clients.Item(key(id)))
        record->Active = false;
}

void frmCrono::CambiaPeriodo(qint16 id, qint16 period)
{
    if (clsCliente* record = m_clients.Item(key(id)))
        record->Period = period;
}

void frmCrono::setTimerEnabled(bool enabled)
{
    const bool permitted = enabled && !m_globais.ShuttingDown;
    if (m_ticking)
        m_enabledAfterTick = permitted;
    else
        m_timer.setEnabled(permitted);
}

void frmCrono::setTimerInterval(std::chrono::milliseconds interval)
{
    m_timer.setInterval(interval);
}

void frmCrono::tick()
{
    if (m_ticking)
        return;
    m_timer.setEnabled(false);
    m_ticking = true;
    m_enabledAfterTick = true;
    visitClients();
    m_ticking = false;
    if (m_enabledAfterTick && !m_globais.ShuttingDown)
        m_timer.setEnabled(true);
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

QString frmCrono::key(qint16 id)
{
    const QString digits = QString::number(qAbs(static_cast<int>(id))).rightJustified(4, u'0');
    return (id < 0 ? u"X-"_s : u"X"_s) + digits;
}
