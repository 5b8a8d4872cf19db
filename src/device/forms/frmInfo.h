#pragma once

#include "CronoRegistration.h"
#include "DeferredProcess.h"
#include "MdiForm.h"

#include <array>

class QGridLayout;
class QPushButton;
class RoundLamp;
class ValueLabel;

/// The clock's date, time, flags, outputs and inputs. It sends nothing: on each tick it redraws
/// from the latest general data, and shows its design texts until a full block is there.
class frmInfo : public MdiForm, public DeferredProcess {
    Q_OBJECT
public:
    /// What the models differ in.
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
    /// Null on the model without inputs.
    std::array<RoundLamp*, 3> shpEntrada{};
    QPushButton* cmdPechar;
};

class frmInfoHCT7200 final : public frmInfo {
    Q_OBJECT
public:
    frmInfoHCT7200(QMdiArea& area, frmCrono& crono, const modGlobais& globais);
};

/// Without inputs, which the HCT-7300 has none of.
class frmInfoHCT7300 final : public frmInfo {
    Q_OBJECT
public:
    frmInfoHCT7300(QMdiArea& area, frmCrono& crono, const modGlobais& globais);
};
