#include "frmTelemandoHCT7300.h"

using namespace Qt::StringLiterals;

frmTelemandoHCT7300::frmTelemandoHCT7300(QMdiArea& area, frmCrono& crono, MessageLink& link,
                                         const modGlobais& globais)
    : frmTelemando(area, crono, link, globais, {u"frmTelemandoHCT7300"_s, u"Telemando HCT-7300"_s})
{}
