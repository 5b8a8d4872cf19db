#pragma once

#include "CronoRegistration.h"
#include "DeferredProcess.h"
#include "MdiForm.h"

#include <array>

class QGridLayout;
class QPushButton;
class RoundLamp;
class ValueLabel;

/// The information window: date, time, flags, outputs and inputs of the clock. It sends nothing: on
/// each tick it shows the latest general data. Until a full block has arrived it shows
/// placeholders.
class frmInfo : public MdiForm, public DeferredProcess {
    Q_OBJECT
public:
    /// The differences between the models.
    struct Model {
        QString name;
        QString caption;
        bool hasInputs;
    };

    frmInfo(QMdiArea& area, frmCrono& crono, const modGlobais& globais, const Model& model);

    void ProcesoDiferido() override;
    void Refresh();

protected:
    void unload() override;
    void changeEvent(QEvent* event) override;

private:
    QWidget* makeClockFrame();
    QWidget* makeStatusFrame();
    QWidget* makeOutputsFrame();
    QWidget* makeInputsFrame();
    static RoundLamp* addLamp(QGridLayout& grid, const QString& name, const QString& caption);
    void reserveTextWidths();

    const modGlobais& m_globais;
    CronoRegistration m_registration;
    ValueLabel* lblData;
    ValueLabel* lblHora;
    std::array<RoundLamp*, 5> shpEstado{};
    std::array<RoundLamp*, 3> shpSaida{};
    /// Null for the model without inputs.
    std::array<RoundLamp*, 3> shpEntrada{};
    QPushButton* cmdPechar;
};

class frmInfoHCT7200 final : public frmInfo {
    Q_OBJECT
public:
    frmInfoHCT7200(QMdiArea& area, frmCrono& crono, const modGlobais& globais);
};

/// Without inputs: the HCT-7300 has none.
class frmInfoHCT7300 final : public frmInfo {
    Q_OBJECT
public:
    frmInfoHCT7300(QMdiArea& area, frmCrono& crono, const modGlobais& globais);
};
