#pragma once

#include "frmCrono.h"

#include <QPointer>

/// A client's place in the timer service, from construction to destruction, so that it is removed
/// however a window ends. Periods count ticks of the timer service.
class CronoRegistration {
public:
    /// The shortest period: the client is called on every tick on which the link is idle.
    static constexpr qint16 everyTick = 1;

    /// `period` in ticks of the timer service (1 ms), at least 1.
    CronoRegistration(frmCrono& crono, DeferredProcess& client, qint16 period);
    ~CronoRegistration();
    CronoRegistration(const CronoRegistration&) = delete;
    CronoRegistration& operator=(const CronoRegistration&) = delete;

    void ActivaCliente();
    void DesactivaCliente();
    /// In ticks; below 1 the client is called at every visit.
    void CambiaPeriodo(qint16 period);
    /// Removes the client before the destructor does: for a window that is closed but not yet
    /// deleted.
    void EliminaCliente();
    /// The client's number; 0 after EliminaCliente.
    qint16 id() const { return m_id; }

private:
    QPointer<frmCrono> m_crono;
    qint16 m_id;
};
