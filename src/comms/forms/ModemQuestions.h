#pragma once

#include "LinkState.h"

#include <QObject>
#include <QString>

class Dialogs;
class ModemControl;

/// Asks the operator, by boxes, what a modem's control wants to know, and gives it the answers.
class ModemQuestions final : public QObject {
    Q_OBJECT
public:
    /// The scripts are looked for in the folder Modems of `applicationDirectory`, which ends in the
    /// system's separator.
    ModemQuestions(ModemControl& modem, Dialogs& dialogs, const QString& applicationDirectory);

private:
    void askNumber();
    void askScript();
    void tellBusy();
    void tellFailure(LinkState phase);

    ModemControl& m_modem;
    Dialogs& m_dialogs;
    const QString m_applicationDirectory;
};
