#include "AlarmSeries.h"

#include "ProgrammeTexts.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int minutesOfADay = 24 * 60;

Alarm alarmAt(int minute, const std::array<bool, dayFlagCount>& days)
{
    Alarm alarm;
    alarm.Hour = static_cast<quint8>(minute / 60);
    alarm.Minute = static_cast<quint8>(minute % 60);
    alarm.flags = days;
    return alarm;
}

bool hasActiveAlarmAt(const AlarmBlock& block, const Alarm& time)
{
    return std::any_of(block.Alarms.begin(), block.Alarms.end(), [&](const Alarm& alarm) {
        return alarm.isActive() && alarm.Hour == time.Hour && alarm.Minute == time.Minute;
    });
}

} // namespace

std::vector<Alarm> AlarmSeries::alarms() const
{
    std::vector<Alarm> found;
    int minute = firstMinute;
    for (int number = 1; number <= count && minute < minutesOfADay; ++number) {
        found.push_back(alarmAt(minute, days));
        minute += every + (number == breakAfter ? breakMinutes : 0);
    }
    return found;
}

AlarmSeries::Plan AlarmSeries::into(const AlarmBlock& block) const
{
    const std::vector<Alarm> all = alarms();
    std::vector<Alarm> wanted;
    QStringList taken;
    for (const Alarm& alarm : all) {
        if (hasActiveAlarmAt(block, alarm))
            taken.append(ProgrammeTexts::time(alarm));
        else
            wanted.push_back(alarm);
    }
    Plan plan{AlarmRows::filledIn(block, wanted), {}};
    const auto late = count - static_cast<int>(all.size());
    if (late > 0)
        plan.problems.append(late == 1 ? u"Un aviso pasaría de medianoche."_s
                                       : u"%1 avisos pasarían de medianoche."_s.arg(late));
    if (!taken.isEmpty())
        plan.problems.append(u"Ya hay avisos a las %1."_s.arg(taken.join(u", "_s)));
    if (const QString problem = plan.placed.problem(); !problem.isEmpty())
        plan.problems.append(problem);
    return plan;
}
