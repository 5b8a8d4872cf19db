#include "frmProgHCT7200.h"

using namespace Qt::StringLiterals;

frmProgHCT7200::frmProgHCT7200(QWidget* owner, frmCrono& crono, MessageLink& link,
                               modGlobais& globais, StatusLog& log, Dialogs& dialogs)
    // Two blanks in the caption, here and in the other model's.
    : frmProg({u"Configuración del  HCT-7200"_s, u"HCT-7200"_s, u"HCT-7200"_s}, ClockModel::HCT7200,
              owner, crono, link, globais, log, dialogs)
{
    setObjectName(u"frmProgHCT7200"_s);
}
