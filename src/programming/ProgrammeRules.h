#pragma once

#include "Programme.h"

#include <QString>

#include <optional>

/// What a programme must satisfy before it is sent, and the form that the clock wants it in.
namespace ProgrammeRules {

/// Two active alarms of one block at the same time, whatever their days; or flags that the block's
/// mode does not carry.
struct Violation {
    enum class Kind { Clash, ModeRestriction };

    Kind kind;
    /// 0 to 2.
    int block;
    /// 0 to 31; of a clash the later one.
    int alarm;
    /// What the operator is told, lines separated by CR LF.
    QString text;
};

/// The first violation: clashes of all blocks come before the mode restrictions, which only the
/// HCT-7300 has.
std::optional<Violation> firstViolation(const Programme& programme, ClockModel model);

/// In each block: active alarms to the front in order of time, inactive ones cleared to 0:00, and
/// ActiveCountPlusOne set.
void NormaliseProgramme(Programme& programme);

} // namespace ProgrammeRules
