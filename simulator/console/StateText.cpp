#include "StateText.h"

#include "Line.h"

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

QString byteText(quint8 value) { return u"0x%1"_s.arg(uint(value), 2, 16, QLatin1Char('0')); }

QString yesNo(bool yes) { return yes ? u"yes"_s : u"no"_s; }

QString hexText(const QByteArray& bytes) { return QString::fromLatin1(bytes.toHex()); }

QStringList blockState(int number, const AlarmBlock& block)
{
    const QString key = u"block%1"_s.arg(number);
    return {u"%1.duration=%2"_s.arg(key).arg(block.duration),
            u"%1.mode=%2"_s.arg(key).arg(block.mode),
            u"%1.count=%2"_s.arg(key).arg(block.activeCountPlusOne),
            u"%1.alarms=%2"_s.arg(key, hexText(block.bytes))};
}

QString timeText(int hour, int minute)
{
    return u"%1:%2"_s.arg(hour, 2, 10, QLatin1Char('0')).arg(minute, 2, 10, QLatin1Char('0'));
}

QString daysText(quint8 dayBits, bool extended)
{
    static const std::array<const char*, 5> plain{"Mon", "Tue", "Wed", "Thu", "Fri"};
    static const std::array<const char*, 5> special{"Sat", "Sun", "holiday", "vacation", "Mon-Fri"};
    QStringList names;
    for (size_t day = 0; day < plain.size(); ++day) {
        if ((dayBits & (0x10 >> day)) != 0)
            names += QString::fromLatin1(extended ? special[day] : plain[day]);
    }
    return names.join(u' ');
}

QString dayText(const QByteArray& days, qsizetype at)
{
    return u"%1/%2"_s.arg(uint(quint8(days[at]))).arg(uint(quint8(days[at + 1])));
}

} // namespace

QStringList stateText(Simulator& simulator)
{
    const SimulatedClock& clock = simulator.clock();
    const ClockProgramme& programme = clock.programme();
    const FirmwareImage& firmware = simulator.firmware();
    QStringList lines{
        u"model=%1"_s.arg(clock.model() == Model::Hct7200 ? 7200 : 7300),
        u"device=%1"_s.arg(simulator.line().devicePath()),
        u"time=%1"_s.arg(clock.dateTime().toString(u"yyyy-MM-ddTHH:mm:ss"_s)),
        u"frozen=%1"_s.arg(yesNo(clock.isFrozen())),
        u"mode=%1"_s.arg(clock.isManual() ? u"manual"_s : u"automatic"_s),
        u"outputs=%1"_s.arg(byteText(clock.outputs())),
        u"inputs=%1"_s.arg(byteText(clock.inputs())),
        u"flags=%1"_s.arg(byteText(clock.flags())),
        u"session=%1"_s.arg(simulator.isSessionOpen() ? u"open"_s : u"closed"_s),
        u"answered=%1"_s.arg(simulator.answers().sent()),
        u"good=%1"_s.arg(simulator.answers().good),
        u"spoiled=%1"_s.arg(simulator.answers().spoiled),
        u"withheld=%1"_s.arg(simulator.answers().withheld),
        u"damaged=%1"_s.arg(simulator.receiver().damagedFrames()),
        u"foreign=%1"_s.arg(simulator.receiver().foreignFrames()),
    };
    int number = 0;
    for (const AlarmBlock& block : programme.blocks)
        lines += blockState(++number, block);
    lines += u"holidays=%1"_s.arg(hexText(programme.days.left(32)));
    lines += u"vacations=%1"_s.arg(hexText(programme.days.mid(32)));
    lines += u"firmware.lines=%1"_s.arg(firmware.lineCount());
    lines += u"firmware.bytes=%1"_s.arg(firmware.byteCount());
    lines += u"firmware.complete=%1"_s.arg(yesNo(firmware.isComplete()));
    return lines;
}

QStringList programmeText(const ClockProgramme& programme, Model model)
{
    QStringList lines;
    for (size_t number = 0; number < programme.blocks.size(); ++number) {
        const AlarmBlock& block = programme.blocks[number];
        const bool extended = model == Model::Hct7300 && block.mode >= 2;
        lines +=
            u"block %1: rings %2 s, mode %3"_s.arg(number + 1).arg(block.duration).arg(block.mode);
        for (int alarm = 0; alarm < AlarmBlock::alarmCount; ++alarm) {
            if (block.dayBits(alarm) != 0)
                lines += u"  %1 %2"_s.arg(timeText(block.hour(alarm), block.minute(alarm)),
                                          daysText(block.dayBits(alarm), extended));
        }
    }
    for (qsizetype at = 0; at < 32; at += 2) {
        if (programme.days[at] != 0)
            lines += u"holiday %1"_s.arg(dayText(programme.days, at));
    }
    for (qsizetype at = 32; at < ClockProgramme::dayTableSize; at += 4) {
        if (programme.days[at] != 0)
            lines += u"vacation %1 to %2"_s.arg(dayText(programme.days, at),
                                                dayText(programme.days, at + 2));
    }
    return lines;
}

} // namespace simulator
