#include "frmInfoHCT7200.h"

using namespace Qt::StringLiterals;

frmInfoHCT7200::frmInfoHCT7200(QMdiArea& area, frmCrono& crono, const modGlobais& globais)
    : frmInfo(area, crono, globais, {u"frmInfoHCT7200"_s, u"Información HCT-7200"_s, true})
{}
