#include "ProgrammeFile.h"
#include "ProgrammeRules.h"

#include <cstdlib>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

void checkRanges(const Programme& programme)
{
    for (const AlarmBlock& block : programme.blocks)
        for (const Alarm& alarm : block.Alarms)
            require(alarm.Hour <= 23 && alarm.Minute <= 59);
    for (const Holiday& holiday : programme.table.holidays)
        require(holiday.Day <= 31 && holiday.Month <= 12);
    for (const VacationPeriod& period : programme.table.vacations)
        require(period.StartDay <= 31 && period.StartMonth <= 12 && period.EndDay <= 31 &&
                period.EndMonth <= 12);
}

} // namespace

/// Any text. The values read must be in their ranges, and stay the same when they are saved and
/// read again, and when the text is read twice. The first byte of the input chooses the model.
extern "C" int LLVMFuzzerTestOneInput(const quint8* data, std::size_t size)
{
    if (size < 1)
        return 0;
    const ClockModel model = (data[0] & 1) != 0 ? ClockModel::Hct7300 : ClockModel::Hct7200;
    const QByteArray text(reinterpret_cast<const char*>(data + 1),
                          static_cast<qsizetype>(size - 1));
    Programme programme;
    ProgrammeFile::read(text, programme, model);
    checkRanges(programme);

    Programme again = programme;
    ProgrammeFile::read(text, again, model);
    require(again == programme);
    ProgrammeFile::read(ProgrammeFile::text(programme, model), again, model);
    require(again == programme);

    ProgrammeRules::firstViolation(programme, model);
    ProgrammeRules::NormaliseProgramme(programme);
    for (const AlarmBlock& block : programme.blocks)
        require(block.ActiveCountPlusOne >= 1 && block.ActiveCountPlusOne <= 33);
    return 0;
}
