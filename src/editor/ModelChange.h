#pragma once

#include "Programme.h"

#include <QStringList>

/// What becomes of a programme when it is meant for the other model.
namespace ModelChange {

/// What would be lost or would not be obeyed, one sentence for each output and reason, in Spanish.
QStringList losses(const Programme& programme, ClockModel to);
/// What a file of a programme for this model does not hold, because the modes of its outputs forbid
/// it; likewise. The clock would not get it either.
QStringList lossesInFile(const Programme& programme, ClockModel model);

/// The programme without the flags and modes that the model does not have: such a mode becomes 0,
/// or its file would be taken for one of the other model. All else stays.
Programme converted(const Programme& programme, ClockModel to);

} // namespace ModelChange
