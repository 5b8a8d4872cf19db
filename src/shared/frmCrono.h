#pragma once

#include "IntervalTimer.h"
#include "colClientes.h"
#include "modGlobais.h"

#include <QObject>

#include <functional>

/// The timer service: on each tick of its timer it visits the registered clients in turn and calls
/// those whose period has passed. While the link awaits an answer nobody is visited and no period
/// advances, so at most one request is under way and no client starves the others.
class frmCrono : public QObject {
    Q_OBJECT
public:
    /// `ocupado` tells whether the link awaits an answer.
    frmCrono(IntervalTimer& tmrCrono, const modGlobais& globais, std::function<bool()> ocupado,
             QObject* parent = nullptr);

    /// Registers a client, inactive, to be called every `period` ticks (at least 1). The result,
    /// never 0, identifies it from now on. A number is not used again, but for a run of more than
    /// 65535 registrations, which begins anew with the numbers that have become free.
    qint16 EngadeCliente(DeferredProcess& client, qint16 period);
    /// This and the next three do nothing for a number that is not registered.
    void EliminaCliente(qint16 id);
    void ActivaCliente(qint16 id);
    void DesactivaCliente(qint16 id);
    /// Takes any period as it is: one below 1 means a call at every visit.
    void CambiaPeriodo(qint16 id, qint16 period);

    /// Switches the ticks on or off. Inside a tick this decides what the tick leaves behind; once
    /// the program is shutting down nothing switches them on.
    void setTimerEnabled(bool enabled);
    void setTimerInterval(std::chrono::milliseconds interval);

private:
    void tick();
    void visitClients();
    static QString key(qint16 id);

    IntervalTimer& m_timer;
    const modGlobais& m_globais;
    std::function<bool()> m_ocupado;
    colClientes m_clients;
    qint16 m_lastId = 0;
    /// The position, counted from 1, of the client visited last.
    int m_cursor = 0;
    bool m_ticking = false;
    bool m_enabledAfterTick = false;
};
