#pragma once

#include "TickTimer.h"
#include "colClientes.h"
#include "modGlobais.h"

#include <QObject>

#include <functional>

/// The timer service. On each tick of its timer (1 ms) it visits the clients in turn and calls
/// those whose period has passed. While the link is busy it visits nobody and no period advances,
/// so at most one request is under way. After a client has made the link busy it stops; the next
/// visit begins with the client after it, so every client gets its turn.
///
/// It sleeps through the ticks on which nobody is to be called, and counts them when it wakes or
/// when something changes. Ticks that pass while a client works, also in an event loop of the
/// client's, do not count.
class frmCrono : public QObject {
    Q_OBJECT
public:
    /// `ocupado` tells whether the link is busy: a request or a modem command awaits its answer.
    /// Whenever that may have changed, `ocupadoChanged` must be called, or the service sleeps on.
    frmCrono(TickTimer& tmrCrono, const modGlobais& globais, std::function<bool()> ocupado,
             QObject* parent = nullptr);

    /// Registers a client, inactive, with a period in ticks; below 1 counts as 1. The result is the
    /// client's number, never 0. After 65535 registrations, numbers that have become free are used
    /// again. 0 only when all numbers are taken.
    qint16 EngadeCliente(DeferredProcess& client, qint16 period);
    /// This and the next three do nothing for an unknown number.
    void EliminaCliente(qint16 id);
    void ActivaCliente(qint16 id);
    void DesactivaCliente(qint16 id);
    /// In ticks. With a period below 1 the client is called at every visit.
    void CambiaPeriodo(qint16 id, qint16 period);

    /// Switches the ticks on or off; during a tick it takes effect at the tick's end. While the
    /// program is shutting down the ticks stay off.
    void setTimerEnabled(bool enabled);
    void ocupadoChanged();

private:
    /// Around every change that has to do with who is called when.
    class Change {
    public:
        explicit Change(frmCrono& crono) : m_crono(crono) { m_crono.countSilentTicks(); }
        ~Change() { m_crono.planNextCall(); }
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;

    private:
        frmCrono& m_crono;
    };

    void tick();
    void visitClients();
    /// Counts the ticks that have passed since the last count, on none of which a client was due.
    void countSilentTicks();
    /// What so many visits to all clients leave, on none of which one is due.
    void visitSilently(qint64 times);
    void planNextCall();
    static QString key(qint16 id);

    TickTimer& m_timer;
    const modGlobais& m_globais;
    std::function<bool()> m_ocupado;
    colClientes m_clients;
    qint16 m_lastId = 0;
    /// The position of the client visited last, counted from 1.
    int m_cursor = 0;
    bool m_ticking = false;
    bool m_enabledAfterTick = false;
    /// The number of the tick that was counted last, and of the one on which a client is due.
    qint64 m_counted = 0;
    qint64 m_due = 0;
    /// Whether the link was busy at the last count: then ticks pass without being counted.
    bool m_wasBusy = false;
};
