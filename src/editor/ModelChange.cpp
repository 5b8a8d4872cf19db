#include "ModelChange.h"

#include "ProgrammeTexts.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString counted(int count, const QString& one, const QString& several)
{
    return count == 1 ? one : several.arg(count);
}

bool hasSpecialDays(const Alarm& alarm)
{
    return std::any_of(alarm.flags.begin() + workingDayCount, alarm.flags.end(),
                       [](bool on) { return on; });
}

QStringList lossesOfTheHct7200(const AlarmBlock& block, const QString& output)
{
    QStringList losses;
    const auto special =
        static_cast<int>(std::count_if(block.Alarms.begin(), block.Alarms.end(), hasSpecialDays));
    if (special > 0)
        losses.append(
            u"%1: %2"_s.arg(output, counted(special,
                                            u"un aviso pierde sábado, domingo, festivos y "
                                            "vacaciones."_s,
                                            u"%1 avisos pierden sábado, domingo, festivos y "
                                            "vacaciones."_s)));
    return losses;
}

} // namespace

QStringList ModelChange::losses(const Programme& programme, ClockModel to)
{
    QStringList found;
    if (to == ClockModel::Hct7300)
        return found;
    for (int number = 0; number < Programme::blockCount; ++number)
        found += lossesOfTheHct7200(programme.blocks[static_cast<std::size_t>(number)],
                                    ProgrammeTexts::output(number));
    return found;
}

Programme ModelChange::converted(const Programme& programme, ClockModel to)
{
    Programme converted = programme;
    for (AlarmBlock& block : converted.blocks)
        for (Alarm& alarm : block.Alarms)
            std::fill(alarm.flags.begin() + dayFlagsOf(to), alarm.flags.end(), false);
    return converted;
}
