#pragma once

#include "Programme.h"

#include <QByteArray>

class StatusBlock;

/// The bodies of the requests that read and write a programme, and the checks of their answers.
namespace ProgrammeMessages {

/// 1 byte: 0x00.
QByteArray generalDataRequest();
/// 1 byte: 0xD9.
QByteArray holidaysRequest();
/// 69 bytes, or 71 for the HCT-7300: 0xDA, block number 1 to 3, 32 alarms of two bytes, two
/// zeros, ActiveCountPlusOne; the HCT-7300 adds Duration and Mode.
QByteArray alarmBlock(const AlarmBlock& block, int number, ClockModel model);
/// 66 bytes: 0xD2, 0, 16 times Day and Month, 8 times StartDay, StartMonth, EndDay, EndMonth.
QByteArray holidays(const HolidayTable& table);

/// Reads the three alarm blocks from the status block. It does not contain the holidays.
void LoadBlocksFromStatusBlock(Programme& programme, const StatusBlock& status, ClockModel model);

/// Whether an answer with status Good is an answer to the request and the clock has accepted it.
/// Any other counts as failed.
bool isGeneralData(quint8 code, const QByteArray& body);
bool isHolidays(quint8 code, const QByteArray& body);
/// The table in the body of a good answer to the request for holidays.
HolidayTable holidaysOf(const QByteArray& body);

} // namespace ProgrammeMessages
