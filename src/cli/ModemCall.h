#pragma once

#include "ExitStatus.h"
#include "LinkState.h"

#include <QObject>
#include <QString>

class ModemControl;

/// Answers the questions of a modem's control with one number, and tells why a call failed.
class ModemCall : public QObject {
    Q_OBJECT
public:
    ModemCall(ModemControl& modem, const QString& number);

signals:
    /// With the reason and what to do, in Spanish.
    void failed(ExitStatus status, const QString& reason);

private:
    void commandFailed(LinkState phase);

    ModemControl& m_modem;
    bool m_busy = false;
};
