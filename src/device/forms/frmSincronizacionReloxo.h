#pragma once

#include "ClockSetting.h"
#include "CronoRegistration.h"
#include "MdiForm.h"

class Dialogs;
class QPushButton;
class TextoRestrinxido;

/// Sets the clock by hand or from the computer's clock. It closes itself once the clock has
/// accepted.
class frmSincronizacionReloxo final : public MdiForm {
    Q_OBJECT
public:
    /// The fields start with what the clock last told.
    frmSincronizacionReloxo(QMdiArea& area, frmCrono& crono, MessageLink& link,
                            const modGlobais& globais, StatusLog& log, Dialogs& dialogs,
                            const ClockOfDay& clock);

protected:
    void unload() override;

private:
    QWidget* makeFields();
    QWidget* makeButtons();
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
