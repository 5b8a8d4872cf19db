#pragma once

#include "frmProg.h"

/// Programming of the HCT-7300: of all other models too.
class frmProgHCT7300 final : public frmProg {
    Q_OBJECT
public:
    frmProgHCT7300(QWidget* owner, frmCrono& crono, MessageLink& link, modGlobais& globais,
                   StatusLog& log, Dialogs& dialogs);
};
