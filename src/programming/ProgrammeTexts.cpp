#include "ProgrammeTexts.h"

#include <QStringList>

#include <array>

using namespace Qt::StringLiterals;

namespace ProgrammeTexts {

namespace {

constexpr std::array<const char16_t*, dayFlagCount> dayNames{
    u"lunes",  u"martes",  u"miércoles", u"jueves",    u"viernes",
    u"sábado", u"domingo", u"festivos",  u"vacaciones"};

constexpr int daysOfTheWeek = 7;

/// The first day after `from` that does not continue a run of days of the week.
int endOfRun(const Alarm& alarm, int from)
{
    int end = from;
    while (end < daysOfTheWeek && alarm.flags[static_cast<std::size_t>(end)])
        ++end;
    return end;
}

} // namespace

QString modelName(ClockModel model)
{
    return model == ClockModel::Hct7200 ? u"HCT-7200"_s : u"HCT-7300"_s;
}

QString output(int block) { return u"Salida %1"_s.arg(block + 1); }

QString time(const Alarm& alarm)
{
    return u"%1:%2"_s.arg(alarm.Hour).arg(alarm.Minute, 2, 10, QChar(u'0'));
}

QString day(int flag) { return QString::fromUtf16(dayNames[static_cast<std::size_t>(flag)]); }

QString days(const Alarm& alarm)
{
    constexpr int shortestRange = 3;
    QStringList parts;
    int flag = 0;
    while (flag < dayFlagCount) {
        const int end = endOfRun(alarm, flag);
        if (end - flag >= shortestRange) {
            parts.append(u"%1 a %2"_s.arg(day(flag), day(end - 1)));
            flag = end;
            continue;
        }
        if (alarm.flags[static_cast<std::size_t>(flag)])
            parts.append(day(flag));
        ++flag;
    }
    if (parts.size() < 2)
        return parts.join(QString());
    const QString last = parts.takeLast();
    return u"%1 y %2"_s.arg(parts.join(u", "_s), last);
}

QString date(int day, int month)
{
    return u"%1/%2"_s.arg(day, 2, 10, QChar(u'0')).arg(month, 2, 10, QChar(u'0'));
}

QString period(const VacationPeriod& period)
{
    return u"%1 a %2"_s.arg(date(period.StartDay, period.StartMonth),
                            date(period.EndDay, period.EndMonth));
}

} // namespace ProgrammeTexts
