#pragma once

#include "frmCrono.h"

#include <QPointer>

/// A client's place in the timer service, from construction to destruction, so that no way out of a
/// window can forget to leave. Periods count ticks of the timer service.
class CronoRegistration {
public:
    /// The shortest period.
    static constexpr qint16 everyTick = 1;

    CronoRegistration(frmCrono& crono, DeferredProcess& client, qint16 period);
    ~CronoRegistration();
    CronoRegistration(const CronoRegistration&) = delete;
    CronoRegistration& operator=(const CronoRegistration&) = delete;

    void ActivaCliente();
    void DesactivaCliente();
    void CambiaPeriodo(qint16 period);
    /// Leaves before destruction: for a window that has unloaded but still waits to be deleted.
    void EliminaCliente();
    /// 0 once it has left.
    qint16 id() const { return m_id; }

private:
    QPointer<frmCrono> m_crono;
    qint16 m_id;
};
