#pragma once

#include "CronoRegistration.h"
#include "MdiForm.h"
#include "RemoteControl.h"

#include <array>

class CoverLabel;
class QCheckBox;
class QPushButton;
class RoundLamp;
class Switch;

/// Remote control of the three outputs. The windows of the models differ only in their captions.
class frmTelemando : public MdiForm {
    Q_OBJECT
public:
    struct Model {
        QString name;
        QString caption;
    };

    frmTelemando(QMdiArea& area, frmCrono& crono, MessageLink& link, const modGlobais& globais,
                 const Model& model);

protected:
    void unload() override;

private:
    QWidget* makeFrame(std::size_t row);
    QLayout* makeBottomRow();
    void showMode();
    void showSwitch(std::size_t index, int position);
    void showState(quint8 restBits);

    RemoteControl m_control;
    CronoRegistration m_registration;
    std::array<Switch*, RemoteControl::outputCount> sldInterruptor{};
    std::array<CoverLabel*, RemoteControl::outputCount> lblTapa{};
    std::array<RoundLamp*, RemoteControl::outputCount> shpSaida{};
    QCheckBox* chkAutomatico;
    QPushButton* cmdPechar;
};

class frmTelemandoHCT7200 final : public frmTelemando {
    Q_OBJECT
public:
    frmTelemandoHCT7200(QMdiArea& area, frmCrono& crono, MessageLink& link,
                        const modGlobais& globais);
};

class frmTelemandoHCT7300 final : public frmTelemando {
    Q_OBJECT
public:
    frmTelemandoHCT7300(QMdiArea& area, frmCrono& crono, MessageLink& link,
                        const modGlobais& globais);
};
