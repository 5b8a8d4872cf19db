#include "ProgrammeTable.h"

#include "ProgrammeTexts.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <vector>

using namespace Qt::StringLiterals;

namespace ProgrammeTable {

namespace {

constexpr std::array<const char16_t*, dayFlagCount> letters{u"L", u"M", u"X", u"J", u"V",
                                                            u"S", u"D", u"F", u"Va"};

QString letter(int day) { return QString::fromUtf16(letters[static_cast<std::size_t>(day)]); }

QString meaningOf(quint8 mode, ClockModel model)
{
    if (model == ClockModel::Hct7200)
        return mode == 1 ? u" (intermitente)"_s : QString();
    return mode <= 1 ? u" (días sueltos de lunes a viernes)"_s
                     : u" (sábados, domingos, festivos y vacaciones; de lunes a viernes, todos los "
                       "días o ninguno)"_s;
}

/// One line for an alarm: its time, and the letter of each of its days in the column of that day.
QString rowOf(const Alarm& alarm, ClockModel model)
{
    QString row = u"  %1 "_s.arg(ProgrammeTexts::time(alarm), 5);
    for (int day = 0; day < dayFlagsOf(model); ++day)
        row +=
            u' ' + (alarm.flags[static_cast<std::size_t>(day)] ? letter(day)
                                                               : QString(letter(day).size(), u'·'));
    return row;
}

QStringList linesOf(const AlarmBlock& block, int number, ClockModel model)
{
    QStringList lines{u"%1: duración %2, modo %3%4"_s.arg(ProgrammeTexts::output(number))
                          .arg(block.Duration)
                          .arg(block.Mode)
                          .arg(meaningOf(block.Mode, model))};
    std::vector<Alarm> alarms;
    std::copy_if(block.Alarms.begin(), block.Alarms.end(), std::back_inserter(alarms),
                 [](const Alarm& alarm) { return alarm.isActive(); });
    std::stable_sort(alarms.begin(), alarms.end(), [](const Alarm& one, const Alarm& other) {
        return one.Hour * 60 + one.Minute < other.Hour * 60 + other.Minute;
    });
    for (const Alarm& alarm : alarms)
        lines.append(rowOf(alarm, model));
    if (alarms.empty())
        lines.append(u"  sin avisos"_s);
    return lines;
}

/// Used dates, several in a line.
QStringList datesOf(const QStringList& dates, qsizetype perLine)
{
    QStringList lines;
    for (qsizetype at = 0; at < dates.size(); at += perLine)
        lines.append(u"  "_s + dates.mid(at, perLine).join(u"  "_s));
    if (dates.isEmpty())
        lines.append(u"  ninguno"_s);
    return lines;
}

QStringList linesOf(const HolidayTable& table)
{
    QStringList holidays;
    for (const Holiday& holiday : table.holidays)
        if (holiday != Holiday())
            holidays.append(ProgrammeTexts::date(holiday.Day, holiday.Month));
    QStringList periods;
    for (const VacationPeriod& period : table.vacations)
        if (period != VacationPeriod())
            periods.append(ProgrammeTexts::period(period));
    return QStringList{u"Festivos"_s} + datesOf(holidays, 8) + QStringList{QString()} +
           QStringList{u"Períodos de vacaciones"_s} + datesOf(periods, 1);
}

QString legend(ClockModel model)
{
    QStringList days;
    for (int day = 0; day < dayFlagsOf(model); ++day)
        days.append(u"%1 %2"_s.arg(letter(day), ProgrammeTexts::day(day)));
    return days.join(u", "_s);
}

} // namespace

QString text(const Programme& programme, ClockModel model)
{
    QStringList lines;
    for (int number = 0; number < Programme::blockCount; ++number) {
        lines += linesOf(programme.blocks[static_cast<std::size_t>(number)], number, model);
        lines.append(QString());
    }
    lines += linesOf(programme.table);
    lines.append(QString());
    lines.append(legend(model));
    return lines.join(u'\n') + u'\n';
}

} // namespace ProgrammeTable
