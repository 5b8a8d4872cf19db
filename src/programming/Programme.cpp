#include "Programme.h"

#include "AlarmEncoding.h"
#include "StatusBlock.h"

#include <algorithm>

bool Alarm::onAllWorkingDays() const
{
    return std::all_of(flags.begin(), flags.begin() + workingDayCount, [](bool on) { return on; });
}

void Alarm::setWorkingDays(bool on) { std::fill_n(flags.begin(), workingDayCount, on); }

bool Alarm::isActive() const
{
    return std::any_of(flags.begin(), flags.end(), [](bool on) { return on; });
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
