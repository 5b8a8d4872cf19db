#pragma once

#include "StatusBlock.h"

#include <QDateTime>
#include <QString>

#include <optional>

class Session;

/// Times of day as clocks on a wall show them: in whole seconds, and counted as UTC, so that the
/// difference between two of them knows no change to summer time.
namespace clocktime {

/// What the clock shows; nothing when no calendar has that date or no day that time.
std::optional<QDateTime> ofClock(const StatusBlock& block);
/// When the clock told the general data that has just come: on a slow line the answer takes
/// seconds.
QDateTime ofAnswer(Session& session);
/// What a clock on the wall shows at a moment of the computer.
QDateTime onTheWall(const QDateTime& moment);
/// How many seconds the clock is ahead of the computer, which says `moment`.
std::optional<qint64> secondsAhead(const StatusBlock& block, const QDateTime& moment);
/// "en hora", "2 s adelantado", "3 min atrasado". Above two minutes the unit is the largest of
/// which there are two.
QString differenceText(qint64 secondsAhead);

} // namespace clocktime
