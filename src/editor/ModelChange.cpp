#include "ModelChange.h"

#include "AlarmEncoding.h"
#include "ProgrammeTexts.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace ModelChange {

namespace {

constexpr quint8 lastModeOfTheHct7200 = 1;

bool hasSpecialDays(const Alarm& alarm)
{
    return std::any_of(alarm.flags.begin() + workingDayCount, alarm.flags.end(),
                       [](bool on) { return on; });
}

/// "un aviso pierde …" or "3 avisos pierden …"; empty for none.
QString alarmsThatLose(qsizetype count, const QString& what)
{
    if (count == 0)
        return {};
    return count == 1 ? u"un aviso pierde "_s + what
                      : u"%1 avisos pierden %2"_s.arg(count).arg(what);
}

QStringList lossesForTheHct7200(const AlarmBlock& block)
{
    QStringList losses{
        alarmsThatLose(std::count_if(block.Alarms.begin(), block.Alarms.end(), hasSpecialDays),
                       u"sábado, domingo, festivos o vacaciones."_s)};
    if (block.Mode > lastModeOfTheHct7200)
        losses.append(u"el HCT-7200 no tiene el modo %1."_s.arg(block.Mode));
    losses.removeAll(QString());
    return losses;
}

QStringList lossesForTheHct7300(const AlarmBlock& block)
{
    const AlarmEncoding& encoding = AlarmEncoding::of(ClockModel::Hct7300);
    const auto losesDays = [&](const Alarm& alarm) {
        return encoding.decode(encoding.encode(alarm, block.Mode), block.Mode) != alarm;
    };
    const QString alarms =
        alarmsThatLose(std::count_if(block.Alarms.begin(), block.Alarms.end(), losesDays),
                       block.Mode < 2 ? u"sábado, domingo, festivos o vacaciones."_s
                                      : u"sus días sueltos entre lunes y viernes."_s);
    return alarms.isEmpty() ? QStringList()
                            : QStringList{u"en el modo %1, %2"_s.arg(block.Mode).arg(alarms)};
}

QStringList byOutput(const Programme& programme, QStringList (*lossesOf)(const AlarmBlock&))
{
    QStringList found;
    for (int number = 0; number < Programme::blockCount; ++number) {
        const QString output = ProgrammeTexts::output(number);
        for (const QString& loss : lossesOf(programme.blocks[static_cast<std::size_t>(number)]))
            found.append(u"%1: %2"_s.arg(output, loss));
    }
    return found;
}

} // namespace

QStringList losses(const Programme& programme, ClockModel to)
{
    return byOutput(programme,
                    to == ClockModel::Hct7200 ? lossesForTheHct7200 : lossesForTheHct7300);
}

QStringList lossesInFile(const Programme& programme, ClockModel model)
{
    // That of the HCT-7200 holds all that it has, in every mode.
    return model == ClockModel::Hct7200 ? QStringList() : byOutput(programme, lossesForTheHct7300);
}

Programme converted(const Programme& programme, ClockModel to)
{
    Programme converted = programme;
    for (AlarmBlock& block : converted.blocks) {
        if (to == ClockModel::Hct7200 && block.Mode > lastModeOfTheHct7200)
            block.Mode = 0;
        for (Alarm& alarm : block.Alarms)
            std::fill(alarm.flags.begin() + dayFlagsOf(to), alarm.flags.end(), false);
    }
    return converted;
}

} // namespace ModelChange
