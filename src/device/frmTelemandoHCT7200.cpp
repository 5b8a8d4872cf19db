#include "frmTelemandoHCT7200.h"

using namespace Qt::StringLiterals;

frmTelemandoHCT7200::frmTelemandoHCT7200(QMdiArea& area, frmCrono& crono, MessageLink& link,
                                         const modGlobais& globais)
    : frmTelemando(area, crono, link, globais, {u"frmTelemandoHCT7200"_s, u"Telemando HCT-7200"_s})
{}
