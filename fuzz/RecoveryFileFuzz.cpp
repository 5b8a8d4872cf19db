#include "Input.h"
#include "RecoveryFile.h"

/// Any file in the folder of unsaved work. What is taken for work is within the ranges of a
/// programme, and is read again as it is written. A path may have letters that no file has.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    const auto work = RecoveryFile::read(Input(bytes, size).rest());
    if (!work)
        return 0;
    for (const AlarmBlock& block : work->programme.blocks)
        for (const Alarm& alarm : block.Alarms)
            require(alarm.Hour <= 23 && alarm.Minute <= 59);
    for (const Holiday& holiday : work->programme.table.holidays)
        require(holiday.Day <= 31 && holiday.Month <= 12);
    for (const VacationPeriod& period : work->programme.table.vacations)
        require(period.StartDay <= 31 && period.StartMonth <= 12 && period.EndDay <= 31 &&
                period.EndMonth <= 12);
    const auto again = RecoveryFile::read(RecoveryFile::text(*work));
    require(again && again->programme == work->programme && again->model == work->model &&
            again->fileHash == work->fileHash && again->isMisread == work->isMisread);
    return 0;
}
