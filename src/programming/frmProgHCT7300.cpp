#include "frmProgHCT7300.h"

using namespace Qt::StringLiterals;

frmProgHCT7300::frmProgHCT7300(QWidget* owner, frmCrono& crono, MessageLink& link,
                               modGlobais& globais, StatusLog& log, Dialogs& dialogs)
    // The notice of a running exchange names this model, as the caption does; in the file dialogs
    // it speaks of HCT alone.
    : frmProg({u"Configuración del  HCT-7300"_s, u"HCT-7300"_s, u"HCT"_s}, ClockModel::HCT7300,
              owner, crono, link, globais, log, dialogs)
{
    setObjectName(u"frmProgHCT7300"_s);
}
