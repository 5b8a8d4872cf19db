#include "AlarmText.h"
#include "Input.h"

#include <algorithm>

/// Any text from the clipboard. Each alarm that is read has a time and only days of its model, each
/// line gives one alarm at most, and what is written of them is read again as they are. The first
/// byte of the input is the model.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    Input input(bytes, size);
    const ClockModel model = input.byte() % 2 == 0 ? ClockModel::Hct7200 : ClockModel::Hct7300;
    const QString text = QString::fromUtf8(input.rest());

    const AlarmText::Alarms read = AlarmText::parse(text, model);
    const auto lines = 1 + std::count_if(text.begin(), text.end(), [](QChar character) {
                           return character == u'\n' || character == u'\r';
                       });
    require(read.alarms.size() <= static_cast<std::size_t>(lines));
    for (const Alarm& alarm : read.alarms) {
        require(alarm.Hour <= 23 && alarm.Minute <= 59);
        require(std::none_of(alarm.flags.begin() + dayFlagsOf(model), alarm.flags.end(),
                             [](bool on) { return on; }));
    }
    const AlarmText::Alarms again = AlarmText::parse(AlarmText::text(read.alarms), model);
    require(again.alarms == read.alarms && again.problems.isEmpty());
    return 0;
}
