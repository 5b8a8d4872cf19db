#include "ClockTime.h"

#include "ClockOfDay.h"
#include "Session.h"
#include "modUtilidades.h"

#include <QTimeZone>

#include <array>

using namespace Qt::StringLiterals;

std::optional<QDateTime> clocktime::ofClock(const StatusBlock& block)
{
    const QDate date(modUtilidades::fullYear(block.year()), block.month(), block.day());
    const QTime time(block.hours(), block.minutes(), block.seconds());
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(date, time, QTimeZone::utc());
}

QDateTime clocktime::ofAnswer(Session& session)
{
    return session.environment().clock.now().addMSecs(-session.link().sinceHeader().count());
}

QDateTime clocktime::onTheWall(const QDateTime& moment)
{
    const QTime time = moment.time();
    return QDateTime(moment.date(), QTime(time.hour(), time.minute(), time.second()),
                     QTimeZone::utc());
}

std::optional<qint64> clocktime::secondsAhead(const StatusBlock& block, const QDateTime& moment)
{
    const auto shown = ofClock(block);
    return shown ? std::optional(onTheWall(moment).secsTo(*shown)) : std::nullopt;
}

QString clocktime::differenceText(qint64 secondsAhead)
{
    if (secondsAhead == 0)
        return u"en hora"_s;
    struct Unit {
        qint64 seconds;
        QString name;
    };
    static const std::array<Unit, 3> units{{{86400, u"días"_s}, {3600, u"h"_s}, {60, u"min"_s}}};
    const QString side = secondsAhead > 0 ? u"adelantado"_s : u"atrasado"_s;
    const qint64 size = qAbs(secondsAhead);
    for (const Unit& unit : units)
        if (size >= 2 * unit.seconds)
            return u"%1 %2 %3"_s.arg(QString::number(size / unit.seconds), unit.name, side);
    return u"%1 s %2"_s.arg(QString::number(size), side);
}
