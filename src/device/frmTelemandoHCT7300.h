#pragma once

#include "frmTelemando.h"

/// Remote control of the second model.
class frmTelemandoHCT7300 final : public frmTelemando {
    Q_OBJECT
public:
    frmTelemandoHCT7300(QMdiArea& area, frmCrono& crono, MessageLink& link,
                        const modGlobais& globais);
};
