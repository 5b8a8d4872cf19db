#include "ProgrammeJson.h"

#include "ProgrammeTexts.h"

#include <array>

using namespace Qt::StringLiterals;

namespace ProgrammeJson {

namespace {

constexpr std::array<const char16_t*, dayFlagCount> dayKeys{u"monday",   u"tuesday",  u"wednesday",
                                                            u"thursday", u"friday",   u"saturday",
                                                            u"sunday",   u"holidays", u"vacations"};

QJsonObject dateObject(int day, int month) { return {{u"day"_s, day}, {u"month"_s, month}}; }

QJsonObject alarmObject(const Alarm& alarm, ClockModel model)
{
    QJsonArray days;
    for (std::size_t day = 0; day < static_cast<std::size_t>(dayFlagsOf(model)); ++day)
        if (alarm.flags[day])
            days.append(QString::fromUtf16(dayKeys[day]));
    return {{u"time"_s, ProgrammeTexts::time(alarm).rightJustified(5, u'0')}, {u"days"_s, days}};
}

QJsonObject outputObject(const AlarmBlock& block, int number, ClockModel model)
{
    QJsonArray alarms;
    for (const Alarm& alarm : block.Alarms)
        if (alarm.isActive())
            alarms.append(alarmObject(alarm, model));
    return {{u"output"_s, number + 1},
            {u"duration"_s, block.Duration},
            {u"mode"_s, block.Mode},
            {u"alarms"_s, alarms}};
}

QString keyOf(ProgrammeDifference::Entry::Kind kind)
{
    using Kind = ProgrammeDifference::Entry::Kind;
    switch (kind) {
    case Kind::Added: return u"added"_s;
    case Kind::Removed: return u"removed"_s;
    case Kind::Changed: return u"changed"_s;
    }
    return {};
}

QString keyOf(ProgrammeDifference::Entry::What what)
{
    using What = ProgrammeDifference::Entry::What;
    switch (what) {
    case What::Duration: return u"duration"_s;
    case What::Mode: return u"mode"_s;
    case What::Alarm: return u"alarm"_s;
    case What::Holiday: return u"holiday"_s;
    case What::Vacation: return u"vacation"_s;
    }
    return {};
}

} // namespace

QJsonObject object(const Programme& programme, ClockModel model)
{
    QJsonArray outputs;
    for (int number = 0; number < Programme::blockCount; ++number)
        outputs.append(
            outputObject(programme.blocks[static_cast<std::size_t>(number)], number, model));
    QJsonArray holidays;
    for (const Holiday& holiday : programme.table.holidays)
        if (holiday != Holiday())
            holidays.append(dateObject(holiday.Day, holiday.Month));
    QJsonArray vacations;
    for (const VacationPeriod& period : programme.table.vacations)
        if (period != VacationPeriod())
            vacations.append(
                QJsonObject{{u"from"_s, dateObject(period.StartDay, period.StartMonth)},
                            {u"to"_s, dateObject(period.EndDay, period.EndMonth)}});
    return {{u"model"_s, ProgrammeTexts::modelName(model)},
            {u"outputs"_s, outputs},
            {u"holidays"_s, holidays},
            {u"vacations"_s, vacations}};
}

QJsonArray array(const QList<ProgrammeDifference::Entry>& entries)
{
    QJsonArray all;
    for (const ProgrammeDifference::Entry& entry : entries) {
        QJsonObject one{{u"kind"_s, keyOf(entry.kind)},
                        {u"what"_s, keyOf(entry.what)},
                        {u"text"_s, entry.text}};
        if (entry.block >= 0)
            one.insert(u"output"_s, entry.block + 1);
        if (entry.rowBefore >= 0)
            one.insert(u"rowBefore"_s, entry.rowBefore + 1);
        if (entry.rowAfter >= 0)
            one.insert(u"rowAfter"_s, entry.rowAfter + 1);
        all.append(one);
    }
    return all;
}

QJsonArray array(const QList<ProgrammeCheck::Problem>& problems)
{
    using Kind = ProgrammeCheck::Problem::Kind;
    QJsonArray all;
    for (const ProgrammeCheck::Problem& problem : problems) {
        QJsonObject one{{u"severity"_s, problem.kind == Kind::Doubtful ? u"warning"_s : u"error"_s},
                        {u"text"_s, problem.text}};
        if (problem.line > 0)
            one.insert(u"line"_s, problem.line);
        all.append(one);
    }
    return all;
}

} // namespace ProgrammeJson
