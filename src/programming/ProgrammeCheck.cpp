#include "ProgrammeCheck.h"

#include "AlarmEncoding.h"
#include "CalendarDate.h"
#include "ProgrammeFile.h"
#include "ProgrammeRules.h"
#include "ProgrammeTexts.h"
#include "StrictLines.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace ProgrammeCheck {

namespace {

/// What a wrong mask of days should have been.
QString maskHint(ClockModel model, quint8 mode)
{
    if (model == ClockModel::Hct7200)
        return u" (de lunes a viernes)"_s;
    return mode <= 1
               ? u" (en el modo %1 solo hay días de lunes a viernes)"_s.arg(mode)
               : u" (en el modo %1: sábado, domingo, festivos, vacaciones y de lunes a viernes)"_s
                     .arg(mode);
}

/// One block, and where its alarms are in the file.
struct CheckedBlock {
    AlarmBlock block;
    std::array<int, AlarmBlock::alarmCount> lines{};
};

CheckedBlock readBlockStrictly(StrictLines& lines, int number, ClockModel model)
{
    CheckedBlock checked;
    AlarmBlock& block = checked.block;
    lines.header();
    lines.number(u"Duración de la salida %1"_s.arg(number + 1));
    block.Mode = lines.number(u"Modo de la salida %1"_s.arg(number + 1)).value_or(0);
    if (model == ClockModel::Hct7200 && block.Mode > 1)
        lines.note(Problem::Kind::Doubtful, lines.line(),
                   u"Modo de la salida %1: el %2 solo lo tiene el HCT-7300."_s.arg(number + 1)
                       .arg(block.Mode));
    const QString hint = maskHint(model, block.Mode);
    for (int index = 0; index < AlarmBlock::alarmCount; ++index) {
        const QString where = u" del aviso %1 de la salida %2"_s.arg(index + 1).arg(number + 1);
        const auto hour = lines.number(u"Hora"_s + where);
        checked.lines[static_cast<std::size_t>(index)] = lines.line();
        const auto minute = lines.number(u"Minuto"_s + where);
        const auto mask = lines.number(u"Días"_s + where, hint);
        // An alarm without a good time cannot clash.
        if (!hour || !minute || !mask)
            continue;
        Alarm& alarm = block.Alarms[static_cast<std::size_t>(index)];
        alarm.Hour = *hour;
        alarm.Minute = *minute;
        AlarmEncoding::of(model).applyMask(alarm, *mask, block.Mode);
    }
    return checked;
}

void noteClashes(StrictLines& lines, const CheckedBlock& checked, int number)
{
    std::array<bool, AlarmBlock::alarmCount> told{};
    for (const ProgrammeRules::Clash& clash : ProgrammeRules::clashes(checked.block)) {
        const auto second = static_cast<std::size_t>(clash.second);
        if (std::exchange(told[second], true))
            continue;
        lines.note(Problem::Kind::Impossible, checked.lines[second],
                   u"Salida %1: el aviso %2 es a la misma hora que el %3, las %4."_s.arg(number + 1)
                       .arg(clash.second + 1)
                       .arg(clash.first + 1)
                       .arg(ProgrammeTexts::time(checked.block.Alarms[second])));
    }
}

enum class DateState { Unreadable, Unused, Used };

/// Reads a date and notes what is wrong with it. `whose` is "del festivo 3".
DateState checkDate(StrictLines& lines, const QString& whose)
{
    const auto day = lines.number(u"Día "_s + whose);
    const int dayLine = lines.line();
    const auto month = lines.number(u"Mes "_s + whose);
    if (!day || !month)
        return DateState::Unreadable;
    if (*day == 0 && *month == 0)
        return DateState::Unused;
    const QString fault = CalendarDate::faultOf(*day, *month);
    const bool lacksMonth = *month == 0;
    if (!fault.isEmpty())
        lines.note(Problem::Kind::Impossible, lacksMonth ? lines.line() : dayLine,
                   u"Fecha %1: %2."_s.arg(whose, fault));
    return DateState::Used;
}

void checkPeriod(StrictLines& lines, int number)
{
    const DateState start =
        checkDate(lines, u"de inicio del período de vacaciones %1"_s.arg(number));
    const int startLine = lines.line() - 1;
    const DateState end = checkDate(lines, u"de fin del período de vacaciones %1"_s.arg(number));
    if (start == DateState::Unused && end == DateState::Used)
        lines.note(Problem::Kind::Impossible, startLine,
                   u"El período de vacaciones %1 tiene fin y no tiene inicio."_s.arg(number));
    if (start == DateState::Used && end == DateState::Unused)
        lines.note(Problem::Kind::Impossible, lines.line() - 1,
                   u"El período de vacaciones %1 tiene inicio y no tiene fin."_s.arg(number));
}

} // namespace

QList<Problem> problemsOf(QByteArrayView text, ClockModel model)
{
    StrictLines lines(text);
    if (text.size() > ProgrammeFile::maximumBytes)
        lines.note(Problem::Kind::Misread, 0,
                   u"El archivo es demasiado largo: solo se lee su primer mebibyte."_s);
    for (int number = 0; number < Programme::blockCount; ++number)
        noteClashes(lines, readBlockStrictly(lines, number, model), number);
    lines.header();
    for (int index = 1; index <= HolidayTable::holidayCount; ++index)
        checkDate(lines, u"del festivo %1"_s.arg(index));
    lines.header();
    for (int index = 1; index <= HolidayTable::vacationCount; ++index)
        checkPeriod(lines, index);

    QList<Problem> problems = lines.problems();
    std::stable_sort(
        problems.begin(), problems.end(),
        [](const Problem& one, const Problem& other) { return one.line < other.line; });
    return problems;
}

bool hasErrors(const QList<Problem>& problems)
{
    return std::any_of(problems.begin(), problems.end(), [](const Problem& problem) {
        return problem.kind != Problem::Kind::Doubtful;
    });
}

bool isMisread(const QList<Problem>& problems)
{
    return std::any_of(problems.begin(), problems.end(), [](const Problem& problem) {
        return problem.kind == Problem::Kind::Misread;
    });
}

} // namespace ProgrammeCheck
