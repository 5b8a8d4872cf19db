#include "ProgrammeRules.h"

#include "ProgrammeTexts.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace ProgrammeRules {

namespace {

Violation violationOf(const Clash& clash, const AlarmBlock& block, int number)
{
    const Alarm& alarm = block.Alarms[static_cast<std::size_t>(clash.second)];
    // Without leading zeros: 08:05 is written 8:5. This is intentional.
    const QString text =
        u"Error en el bloque de avisos %1. Está intentando programar múltiples avisos\r\n"
        "para las %2:%3 horas."_s.arg(number + 1)
            .arg(alarm.Hour)
            .arg(alarm.Minute);
    const QString reason = u"A la misma hora que el aviso %1, las %2."_s.arg(clash.first + 1)
                               .arg(ProgrammeTexts::time(alarm));
    return {Violation::Kind::Clash, number, clash.second, text, reason, clash.first};
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

/// What an active alarm has and the mode does not allow, in one line; empty when it has none.
QString forbiddenDays(const Alarm& alarm, quint8 mode)
{
    if (mode <= 1 && carriesSpecialDays(alarm))
        return u"Sabados, Domingos, Festivos ni Vacaciones."_s;
    if ((mode == 2 || mode == 3) && carriesSingleWorkingDays(alarm))
        return u"días sueltos entre lunes y viernes."_s;
    return {};
}

std::optional<Violation> restrictionOf(const AlarmBlock& block, int number, int index)
{
    // The box begins its last line with blanks, more of them for the shorter text.
    constexpr int blanksOfSpecialDays = 10;
    constexpr int blanksOfSingleDays = 17;
    const QString days = forbiddenDays(block.Alarms[static_cast<std::size_t>(index)], block.Mode);
    if (days.isEmpty())
        return std::nullopt;
    const QString rule = u"En el Modo de Avisos %1, no se puede programar:"_s.arg(block.Mode);
    const QString blanks(block.Mode <= 1 ? blanksOfSpecialDays : blanksOfSingleDays, u' ');
    return Violation{
        Violation::Kind::ModeRestriction, number, index,
        u"   No se ha podido realizar la configuración del equipo.\r\n     %1\r\n%2%3"_s.arg(
            rule, blanks, days),
        rule + u' ' + days};
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

std::vector<Violation> violations(const Programme& programme, ClockModel model)
{
    std::vector<Violation> found;
    for (int number = 0; number < Programme::blockCount; ++number) {
        const AlarmBlock& block = programme.blocks[static_cast<std::size_t>(number)];
        for (const Clash& clash : clashes(block))
            found.push_back(violationOf(clash, block, number));
    }
    if (model == ClockModel::Hct7200)
        return found;
    for (int number = 0; number < Programme::blockCount; ++number) {
        const AlarmBlock& block = programme.blocks[static_cast<std::size_t>(number)];
        for (int index = 0; index < AlarmBlock::alarmCount; ++index)
            if (auto restriction = restrictionOf(block, number, index))
                found.push_back(*std::move(restriction));
    }
    return found;
}

std::optional<Violation> firstViolation(const Programme& programme, ClockModel model)
{
    std::vector<Violation> found = violations(programme, model);
    return found.empty() ? std::nullopt : std::optional(std::move(found.front()));
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
