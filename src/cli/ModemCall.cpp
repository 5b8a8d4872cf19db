#include "ModemCall.h"

#include "ModemControl.h"

using namespace Qt::StringLiterals;

ModemCall::ModemCall(ModemControl& modem, const QString& number) : m_modem(modem)
{
    connect(&modem, &ModemControl::numberWanted, this, [this, number] { m_modem.dial(number); });
    connect(&modem, &ModemControl::lineFoundBusy, this, [this] {
        m_busy = true;
        m_modem.acknowledgeBusy();
    });
    connect(&modem, &ModemControl::failed, this, &ModemCall::commandFailed);
}

void ModemCall::commandFailed(LinkState phase)
{
    if (phase == LinkState::Initialisation)
        emit failed(ExitStatus::Silent,
                    u"El módem no responde: revise las conexiones y, con hct, la "
                    "configuración del módem."_s);
    else if (m_busy)
        emit failed(
            ExitStatus::Silent,
            u"El módem con el que se intenta contactar está comunicando: compruebe el número "
            "o inténtelo más tarde."_s);
    else
        emit failed(ExitStatus::Silent,
                    u"La llamada ha fallado: compruebe el número y la cobertura. Si la tarjeta SIM "
                    "espera su PIN, introdúzcalo con hct, en Configuración, Operación de módem."_s);
    m_modem.acknowledgeFailure();
}
