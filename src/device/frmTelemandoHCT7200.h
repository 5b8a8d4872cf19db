#pragma once

#include "frmTelemando.h"

/// Remote control of the first model.
class frmTelemandoHCT7200 final : public frmTelemando {
    Q_OBJECT
public:
    frmTelemandoHCT7200(QMdiArea& area, frmCrono& crono, MessageLink& link,
                        const modGlobais& globais);
};
