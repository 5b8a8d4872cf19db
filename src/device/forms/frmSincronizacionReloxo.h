#pragma once

#include "ClockSetting.h"
#include "CronoRegistration.h"
#include "MdiForm.h"

class Dialogs;
class QPushButton;
class TextoRestrinxido;

/// Sets the clock's date and time by hand or to those of the computer. It closes when the clock has
/// accepted them.
class frmSincronizacionReloxo final : public MdiForm {
    Q_OBJECT
public:
    /// The fields begin with the values in the latest general data.
    frmSincronizacionReloxo(QMdiArea& area, frmCrono& crono, MessageLink& link,
                            const modGlobais& globais, StatusLog& log, Dialogs& dialogs,
                            const ClockOfDay& clock);

protected:
    void unload() override;

private:
    QWidget* makeFields();
    QWidget* makeButtons();
    void connectControls(Dialogs& dialogs);
    void showFields(const ClockFields& fields);
    void takeFields();
    void judgeDate();
    void begin(ClockSetting::State source);

    ClockSetting m_setting;
    CronoRegistration m_registration;
    TextoRestrinxido* txtData;
    TextoRestrinxido* txtHora;
    QPushButton* cmdEnviar;
    QPushButton* cmdPC;
    QPushButton* cmdPechar;
};
