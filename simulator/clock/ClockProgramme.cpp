#include "ClockProgramme.h"

#include <initializer_list>

namespace simulator {

namespace {

constexpr quint8 mondayToFriday = 0x1F;

/// Whether (month, day) lies in the period; one that ends before it starts spans the new year.
bool covers(const char* period, QDate date)
{
    if (period[0] == 0 || period[2] == 0)
        return false;
    const int start = quint8(period[1]) * 32 + quint8(period[0]);
    const int end = quint8(period[3]) * 32 + quint8(period[2]);
    const int today = date.month() * 32 + date.day();
    return start <= end ? today >= start && today <= end : today >= start || today <= end;
}

/// Whether an alarm's day bits name that day. In the modes 0 and 1 they are Monday to Friday; in
/// the others Saturday, Sunday, holiday, vacation and, all in one, Monday to Friday.
bool isDayOf(quint8 dayBits, bool extended, const ClockProgramme& programme, QDate date)
{
    const bool vacation = programme.isVacation(date);
    const bool holiday = programme.isHoliday(date);
    if (!extended) {
        if (vacation || holiday || date.dayOfWeek() > 5)
            return false;
        return (dayBits & (0x10 >> (date.dayOfWeek() - 1))) != 0;
    }
    if (vacation)
        return (dayBits & 0x02) != 0;
    if (holiday)
        return (dayBits & 0x04) != 0;
    if (date.dayOfWeek() == 6)
        return (dayBits & 0x10) != 0;
    if (date.dayOfWeek() == 7)
        return (dayBits & 0x08) != 0;
    return (dayBits & 0x01) != 0;
}

struct Bell {
    int hour;
    int minute;
    quint8 dayBits = mondayToFriday;
};

void fill(AlarmBlock& block, quint8 duration, quint8 mode, std::initializer_list<Bell> bells)
{
    block.duration = duration;
    block.mode = mode;
    int alarm = 0;
    for (const Bell& bell : bells)
        block.setAlarm(alarm++, bell.hour, bell.minute, bell.dayBits);
    block.activeCountPlusOne = quint8(alarm + 1);
}

} // namespace

quint8 AlarmBlock::dayBits(qsizetype alarm) const
{
    const int first = quint8(bytes[2 * alarm]) >> 5;
    const int second = quint8(bytes[2 * alarm + 1]) >> 6;
    return quint8(first << 2 | second);
}

void AlarmBlock::setAlarm(qsizetype alarm, int hour, int minute, quint8 dayBits)
{
    bytes[2 * alarm] = char((dayBits >> 2) << 5 | (hour & 0x1F));
    bytes[2 * alarm + 1] = char((dayBits & 0x03) << 6 | (minute & 0x3F));
}

int AlarmBlock::activeAlarms() const
{
    int active = 0;
    for (int alarm = 0; alarm < alarmCount; ++alarm)
        active += dayBits(alarm) != 0 ? 1 : 0;
    return active;
}

bool ClockProgramme::isHoliday(QDate date) const
{
    for (qsizetype at = 0; at < 32; at += 2) {
        if (quint8(days[at]) == date.day() && quint8(days[at + 1]) == date.month())
            return true;
    }
    return false;
}

bool ClockProgramme::isVacation(QDate date) const
{
    for (qsizetype at = 32; at < dayTableSize; at += 4) {
        if (covers(days.constData() + at, date))
            return true;
    }
    return false;
}

bool ClockProgramme::rings(int block, const QDateTime& moment, Model model) const
{
    const AlarmBlock& alarms = blocks[size_t(block)];
    const bool extended = model == Model::Hct7300 && alarms.mode >= 2;
    for (int alarm = 0; alarm < AlarmBlock::alarmCount; ++alarm) {
        if (alarms.dayBits(alarm) == 0 || alarms.hour(alarm) > 23 || alarms.minute(alarm) > 59)
            continue;
        // An alarm that begins just before midnight still rings after it; the day of its start
        // counts.
        const QTime start(alarms.hour(alarm), alarms.minute(alarm));
        const qint64 sounding =
            (qint64(start.msecsTo(moment.time())) + 86'400'000) % 86'400'000 / 1000;
        if (sounding >= alarms.duration)
            continue;
        if (!isDayOf(alarms.dayBits(alarm), extended, *this, moment.addSecs(-sounding).date()))
            continue;
        const bool intermittent = alarms.mode == 1;
        return !intermittent || sounding % 2 == 0;
    }
    return false;
}

ClockProgramme schoolProgramme(Model model)
{
    ClockProgramme programme;
    fill(programme.blocks[0], 8, 0,
         {{9, 0}, {9, 55}, {10, 50}, {11, 20}, {12, 15}, {13, 10}, {14, 5}, {16, 0}, {17, 30}});
    fill(programme.blocks[1], 5, 1, {{10, 50}, {11, 15}, {11, 20}, {16, 45}});
    if (model == Model::Hct7300)
        fill(programme.blocks[2], 12, 2, {{10, 0, 0x18}, {18, 0, 0x01}, {20, 30, 0x11}});
    else
        fill(programme.blocks[2], 12, 0, {{18, 0, 0x1C}, {20, 30, 0x1E}});
    programme.days.replace(0, 16, QByteArray::fromHex("0101 0601 0105 0f08 0c0a 010b 060c 080c"));
    programme.days.replace(32, 12, QByteArray::fromHex("170c0701 1a030404 19060809"));
    return programme;
}

} // namespace simulator
