#include "ProgrammeRules.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace ProgrammeRules {

namespace {

std::optional<Violation> firstClash(const AlarmBlock& block, int number)
{
    const std::vector<Clash> found = clashes(block);
    if (found.empty())
        return std::nullopt;
    const int later = found.front().second;
    const Alarm& alarm = block.Alarms[static_cast<std::size_t>(later)];
    // Without leading zeros: 08:05 is written 8:5. This is intentional.
    const QString text =
        u"Error en el bloque de avisos %1. Está intentando programar múltiples avisos\r\n"
        "para las %2:%3 horas."_s.arg(number + 1)
            .arg(alarm.Hour)
            .arg(alarm.Minute);
    return Violation{Violation::Kind::Clash, number, later, text};
}

bool carriesSpecialDays(const Alarm& alarm)
{
    return alarm.is(DayFlag::Saturday) || alarm.is(DayFlag::Sunday) ||
           alarm.is(DayFlag::OnHoliday) || alarm.is(DayFlag::OnVacation);
}

bool carriesSingleWorkingDays(const Alarm& alarm)
{
    Alarm days = alarm;
    days.flags = {};
    std::copy_n(alarm.flags.begin(), workingDayCount, days.flags.begin());
    return days.isActive() && !days.onAllWorkingDays();
}

QString restrictionText(quint8 mode, const QString& what)
{
    return u"   No se ha podido realizar la configuración del equipo.\r\n"
           "     En el Modo de Avisos %1, no se puede programar:\r\n%2"_s.arg(mode)
               .arg(what);
}

std::optional<Violation> firstRestriction(const AlarmBlock& block, int number)
{
    for (int index = 0; index < AlarmBlock::alarmCount; ++index) {
        const Alarm& alarm = block.Alarms[static_cast<std::size_t>(index)];
        if (!alarm.isActive())
            continue;
        if (block.Mode <= 1 && carriesSpecialDays(alarm))
            return Violation{
                Violation::Kind::ModeRestriction, number, index,
                restrictionText(block.Mode,
                                u"          Sabados, Domingos, Festivos ni Vacaciones."_s)};
        if ((block.Mode == 2 || block.Mode == 3) && carriesSingleWorkingDays(alarm))
            return Violation{
                Violation::Kind::ModeRestriction, number, index,
                restrictionText(block.Mode,
                                u"                 días sueltos entre lunes y viernes."_s)};
    }
    return std::nullopt;
}

bool comesBefore(const Alarm& second, const Alarm& first)
{
    if (second.isActive() && !first.isActive())
        return true;
    return first.isActive() && second.isActive() &&
           (second.Hour < first.Hour ||
            (second.Hour == first.Hour && second.Minute < first.Minute));
}

/// An exchange sort, step by step. It is not stable: a sort of the library would leave alarms with
/// equal times in another order.
void sortAlarms(AlarmBlock& block)
{
    auto& alarms = block.Alarms;
    for (std::size_t i = 0; i + 1 < alarms.size(); ++i)
        for (std::size_t j = i + 1; j < alarms.size(); ++j)
            if (comesBefore(alarms[j], alarms[i]))
                std::swap(alarms[i], alarms[j]);
}

void clearInactive(AlarmBlock& block)
{
    int firstInactive = AlarmBlock::alarmCount;
    for (int index = AlarmBlock::alarmCount - 1; index >= 0; --index) {
        Alarm& alarm = block.Alarms[static_cast<std::size_t>(index)];
        if (alarm.isActive())
            continue;
        alarm.Hour = 0;
        alarm.Minute = 0;
        firstInactive = index;
    }
    block.ActiveCountPlusOne = static_cast<quint8>(firstInactive + 1);
}

} // namespace

std::vector<Clash> clashes(const AlarmBlock& block)
{
    std::vector<Clash> found;
    for (int i = 0; i < AlarmBlock::alarmCount; ++i) {
        const Alarm& first = block.Alarms[static_cast<std::size_t>(i)];
        for (int j = i + 1; first.isActive() && j < AlarmBlock::alarmCount; ++j) {
            const Alarm& second = block.Alarms[static_cast<std::size_t>(j)];
            if (second.isActive() && first.Hour == second.Hour && first.Minute == second.Minute)
                found.push_back({i, j});
        }
    }
    return found;
}

std::optional<Violation> firstViolation(const Programme& programme, ClockModel model)
{
    for (int number = 0; number < Programme::blockCount; ++number)
        if (auto clash = firstClash(programme.blocks[static_cast<std::size_t>(number)], number))
            return clash;
    if (model == ClockModel::Hct7200)
        return std::nullopt;
    for (int number = 0; number < Programme::blockCount; ++number)
        if (auto found =
                firstRestriction(programme.blocks[static_cast<std::size_t>(number)], number))
            return found;
    return std::nullopt;
}

quint8 shownMode(quint8 mode, ClockModel model)
{
    if (model == ClockModel::Hct7300)
        return mode;
    return mode == 1 ? 1 : 0;
}

void NormaliseProgramme(Programme& programme)
{
    for (AlarmBlock& block : programme.blocks) {
        sortAlarms(block);
        clearInactive(block);
    }
}

} // namespace ProgrammeRules
