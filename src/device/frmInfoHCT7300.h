#pragma once

#include "frmInfo.h"

/// Information window of the second model, which has no inputs.
class frmInfoHCT7300 final : public frmInfo {
    Q_OBJECT
public:
    frmInfoHCT7300(QMdiArea& area, frmCrono& crono, const modGlobais& globais);
};
