#pragma once

#include "Programme.h"

#include <QString>

#include <optional>
#include <vector>

/// The rules for a programme before it is sent, and the form in which the clock needs it.
namespace ProgrammeRules {

/// Clash: two active alarms of one block have the same time, whatever their days. ModeRestriction:
/// an alarm has flags that the mode of its block does not allow.
struct Violation {
    enum class Kind { Clash, ModeRestriction };

    Kind kind;
    /// 0 to 2.
    int block;
    /// 0 to 31; for a clash, that of the later alarm.
    int alarm;
    /// For the operator, in Spanish; lines are separated by CR LF.
    QString text;
    /// The same in one line, for an alarm that is not to be sent now.
    QString reason;
    /// For a clash, the earlier alarm, 0 to 31; otherwise -1.
    int earlier = -1;
};

/// Two active alarms of one block with the same time, 0 to 31 each.
struct Clash {
    int first;
    int second;

    bool operator==(const Clash&) const = default;
};

/// All pairs, in the order of their first and then of their second alarm.
std::vector<Clash> clashes(const AlarmBlock& block);

/// All violations, one for each clash and each restricted alarm: clashes in all blocks first, then
/// mode restrictions, which only the HCT-7300 has.
std::vector<Violation> violations(const Programme& programme, ClockModel model);
/// The first of them.
std::optional<Violation> firstViolation(const Programme& programme, ClockModel model);

/// The mode that the programming window keeps of a block which it has shown. That of the HCT-7200
/// shows only whether the block is intermittent, mode 1; any other becomes 0.
quint8 shownMode(quint8 mode, ClockModel model);

/// In each block, moves the active alarms to the front in the order of their times, sets inactive
/// ones to 0:00, and sets ActiveCountPlusOne.
void NormaliseProgramme(Programme& programme);

} // namespace ProgrammeRules
