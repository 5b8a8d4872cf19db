#pragma once

#include "frmInfo.h"

/// Information window of the first model.
class frmInfoHCT7200 final : public frmInfo {
    Q_OBJECT
public:
    frmInfoHCT7200(QMdiArea& area, frmCrono& crono, const modGlobais& globais);
};
