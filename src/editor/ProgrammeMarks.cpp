#include "ProgrammeMarks.h"

#include "AlarmEncoding.h"
#include "CalendarDate.h"
#include "ProgrammeRules.h"
#include "ProgrammeTexts.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/// What is wrong with each alarm of the three blocks.
using Reasons = std::array<std::array<QStringList, AlarmBlock::alarmCount>, Programme::blockCount>;

QStringList& at(Reasons& reasons, int block, int row)
{
    return reasons[static_cast<std::size_t>(block)][static_cast<std::size_t>(row)];
}

/// A sentence of the rest of one: "el 31/02 no existe".
QString sentence(const QString& fault) { return fault.at(0).toUpper() + fault.mid(1) + u'.'; }

/// The days that the block's mode neither saves nor sends, as far as no rule forbids them.
bool losesDays(const Alarm& alarm, quint8 mode, ClockModel model)
{
    const AlarmEncoding& encoding = AlarmEncoding::of(model);
    return encoding.decode(encoding.encode(alarm, mode), mode) != alarm;
}

void addViolations(Reasons& reasons, const Programme& programme, ClockModel model)
{
    using ProgrammeRules::Violation;
    for (const Violation& violation : ProgrammeRules::violations(programme, model)) {
        at(reasons, violation.block, violation.alarm).append(violation.reason);
        if (violation.kind != Violation::Kind::Clash)
            continue;
        const Alarm& alarm = programme.blocks[static_cast<std::size_t>(violation.block)]
                                 .Alarms[static_cast<std::size_t>(violation.alarm)];
        at(reasons, violation.block, violation.earlier)
            .append(u"A la misma hora que el aviso %1, las %2."_s.arg(violation.alarm + 1)
                        .arg(ProgrammeTexts::time(alarm)));
    }
}

} // namespace

ProgrammeMarks::ProgrammeMarks(const Programme& programme, ClockModel model)
{
    addAlarms(programme, model);
    addDates(programme.table);
}

void ProgrammeMarks::addAlarms(const Programme& programme, ClockModel model)
{
    Reasons reasons;
    addViolations(reasons, programme, model);
    for (int number = 0; number < Programme::blockCount; ++number) {
        const AlarmBlock& block = programme.blocks[static_cast<std::size_t>(number)];
        for (int row = 0; row < AlarmBlock::alarmCount; ++row) {
            QStringList& here = at(reasons, number, row);
            const Alarm& alarm = block.Alarms[static_cast<std::size_t>(row)];
            if (here.isEmpty() && losesDays(alarm, block.Mode, model))
                here.append(u"En el modo %1 no se guardan ni se envían días sueltos entre lunes y "
                            "viernes."_s.arg(block.Mode));
            if (!here.isEmpty())
                m_marks.append({Place::Alarm, number, row, here.join(u' ')});
        }
    }
}

void ProgrammeMarks::addDates(const HolidayTable& table)
{
    int row = 0;
    for (const Holiday& holiday : table.holidays) {
        const QString fault = CalendarDate::faultOf(holiday.Day, holiday.Month);
        if (!fault.isEmpty())
            m_marks.append({Place::Holiday, -1, row, sentence(fault)});
        ++row;
    }
    row = 0;
    for (const VacationPeriod& period : table.vacations) {
        QStringList reasons;
        const QString start = CalendarDate::faultOf(period.StartDay, period.StartMonth);
        const QString end = CalendarDate::faultOf(period.EndDay, period.EndMonth);
        const QString half = CalendarDate::faultOf(period);
        if (!start.isEmpty())
            reasons.append(u"Inicio: %1."_s.arg(start));
        if (!end.isEmpty())
            reasons.append(u"Fin: %1."_s.arg(end));
        if (!half.isEmpty())
            reasons.append(sentence(half));
        if (!reasons.isEmpty())
            m_marks.append({Place::Vacation, -1, row, reasons.join(u' ')});
        ++row;
    }
}

QString ProgrammeMarks::reasonOf(Place place, int block, int row) const
{
    const auto found = std::find_if(m_marks.begin(), m_marks.end(), [&](const Mark& mark) {
        return mark.place == place && mark.block == block && mark.row == row;
    });
    return found == m_marks.end() ? QString() : found->reason;
}

QString ProgrammeMarks::countText() const
{
    if (m_marks.isEmpty())
        return u"Sin problemas"_s;
    return m_marks.size() == 1 ? u"1 problema"_s : u"%1 problemas"_s.arg(m_marks.size());
}

QString ProgrammeMarks::nameOf(const Mark& mark)
{
    switch (mark.place) {
    case Place::Alarm:
        return u"%1, aviso %2"_s.arg(ProgrammeTexts::output(mark.block)).arg(mark.row + 1);
    case Place::Holiday: return u"Festivo %1"_s.arg(mark.row + 1);
    case Place::Vacation: break;
    }
    return u"Período de vacaciones %1"_s.arg(mark.row + 1);
}
