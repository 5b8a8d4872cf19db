#pragma once

#include "frmProg.h"

/// Programming of the HCT-7200.
class frmProgHCT7200 final : public frmProg {
    Q_OBJECT
public:
    frmProgHCT7200(QWidget* owner, frmCrono& crono, MessageLink& link, modGlobais& globais,
                   StatusLog& log, Dialogs& dialogs);
};
