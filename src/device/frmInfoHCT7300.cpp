#include "frmInfoHCT7300.h"

using namespace Qt::StringLiterals;

frmInfoHCT7300::frmInfoHCT7300(QMdiArea& area, frmCrono& crono, const modGlobais& globais)
    : frmInfo(area, crono, globais, {u"frmInfoHCT7300"_s, u"Información HCT-7300"_s, false})
{}
