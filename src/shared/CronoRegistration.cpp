#include "CronoRegistration.h"

CronoRegistration::CronoRegistration(frmCrono& crono, DeferredProcess& client, qint16 period)
    : m_crono(&crono), m_id(crono.EngadeCliente(client, period))
{}

CronoRegistration::~CronoRegistration() { EliminaCliente(); }

void CronoRegistration::ActivaCliente()
{
    if (m_crono)
        m_crono->ActivaCliente(m_id);
}

void CronoRegistration::DesactivaCliente()
{
    if (m_crono)
        m_crono->DesactivaCliente(m_id);
}

void CronoRegistration::CambiaPeriodo(qint16 period)
{
    if (m_crono)
        m_crono->CambiaPeriodo(m_id, period);
}

void CronoRegistration::EliminaCliente()
{
    if (m_crono)
        m_crono->EliminaCliente(m_id);
    m_id = 0;
}
