#include "ProgrammeMessages.h"

#include "AlarmEncoding.h"
#include "Answer.h"
#include "MessageCodes.h"
#include "StatusBlock.h"

namespace ProgrammeMessages {

namespace {

constexpr qsizetype tableSize = 66;

void append(QByteArray& body, quint8 byte) { body.append(static_cast<char>(byte)); }

} // namespace

QByteArray generalDataRequest() { return QByteArray(1, static_cast<char>(selector::GeneralData)); }

QByteArray holidaysRequest() { return QByteArray(1, static_cast<char>(selector::HolidaysRead)); }

QByteArray alarmBlock(const AlarmBlock& block, int number, ClockModel model)
{
    const AlarmEncoding& encoding = AlarmEncoding::of(model);
    QByteArray body;
    append(body, selector::AlarmBlockWrite);
    append(body, static_cast<quint8>(number + 1));
    for (const Alarm& alarm : block.Alarms) {
        const AlarmEncoding::Bytes bytes = encoding.encode(alarm, block.Mode);
        append(body, bytes.first);
        append(body, bytes.second);
    }
    append(body, 0);
    append(body, 0);
    append(body, block.ActiveCountPlusOne);
    if (model == ClockModel::Hct7300) {
        append(body, block.Duration);
        append(body, block.Mode);
    }
    return body;
}

QByteArray holidays(const HolidayTable& table)
{
    QByteArray body;
    append(body, selector::HolidaysWrite);
    append(body, 0);
    for (const Holiday& holiday : table.holidays) {
        append(body, holiday.Day);
        append(body, holiday.Month);
    }
    for (const VacationPeriod& period : table.vacations) {
        append(body, period.StartDay);
        append(body, period.StartMonth);
        append(body, period.EndDay);
        append(body, period.EndMonth);
    }
    return body;
}

bool isGeneralData(quint8 code, const QByteArray& body)
{
    const StatusBlock block(body);
    return isAccepted(selector::GeneralData, code, body) && block.isFull() &&
           block.deviceType() == StatusBlock::familyType && block.refusal() == 0;
}

bool isHolidays(quint8 code, const QByteArray& body)
{
    return isAccepted(selector::HolidaysRead, code, body) && body.size() >= tableSize;
}

HolidayTable holidaysOf(const QByteArray& body)
{
    HolidayTable table;
    qsizetype at = 2;
    for (Holiday& holiday : table.holidays) {
        holiday = {byteAt(body, at), byteAt(body, at + 1)};
        at += 2;
    }
    for (VacationPeriod& period : table.vacations) {
        period = {byteAt(body, at), byteAt(body, at + 1), byteAt(body, at + 2),
                  byteAt(body, at + 3)};
        at += 4;
    }
    return table;
}

void LoadBlocksFromStatusBlock(Programme& programme, const StatusBlock& status, ClockModel model)
{
    const AlarmEncoding& encoding = AlarmEncoding::of(model);
    int number = 0;
    for (AlarmBlock& block : programme.blocks) {
        block.Duration = status.blockDuration(number);
        block.Mode = status.blockMode(number);
        int index = 0;
        for (Alarm& alarm : block.Alarms) {
            alarm = encoding.decode(
                {status.alarmByte1(number, index), status.alarmByte2(number, index)}, block.Mode);
            ++index;
        }
        ++number;
    }
}

} // namespace ProgrammeMessages
