#include "ClockDisplay.h"
#include "Input.h"
#include "ProgrammeMessages.h"
#include "modUtilidades.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

quint8 at(const QByteArray& body, qsizetype index)
{
    return index < body.size() ? static_cast<quint8>(body[index]) : quint8{0};
}

/// The day flags of two bytes, Monday first, holidays and vacations last.
std::array<bool, 9> flagsOf(quint8 first, quint8 second, bool singleDays)
{
    const bool a = (first & 0x80) != 0;
    const bool b = (first & 0x40) != 0;
    const bool c = (first & 0x20) != 0;
    const bool d = (second & 0x80) != 0;
    const bool e = (second & 0x40) != 0;
    if (singleDays)
        return {a, b, c, d, e, false, false, false, false};
    return {e, e, e, e, e, a, b, c, d};
}

void checkBlock(const QByteArray& body, const AlarmBlock& block, int number, ClockModel model)
{
    const quint8 mode = at(body, 15 + 2 * number);
    require(block.Duration == at(body, 14 + 2 * number) && block.Mode == mode);
    const bool singleDays = model == ClockModel::Hct7200 || mode < 2;
    const QByteArray written = ProgrammeMessages::alarmBlock(block, number, model);
    require(written.size() == (model == ClockModel::Hct7200 ? 69 : 71));
    qsizetype index = 0;
    for (const Alarm& alarm : block.Alarms) {
        const quint8 first = at(body, 20 + 66 * number + 2 * index);
        const quint8 second = at(body, 21 + 66 * number + 2 * index);
        require(alarm.Hour == first % 32 && alarm.Minute == second % 64);
        require(alarm.flags == flagsOf(first, second, singleDays));
        // What was read is written as it came.
        require(at(written, 2 + 2 * index) == first && at(written, 3 + 2 * index) == second);
        ++index;
    }
}

void checkProgramme(const QByteArray& body, ClockModel model)
{
    Programme programme;
    ProgrammeMessages::LoadBlocksFromStatusBlock(programme, StatusBlock(body), model);
    for (int number = 0; number < Programme::blockCount; ++number)
        checkBlock(body, programme.blocks[static_cast<std::size_t>(number)], number, model);
    require(programme.table == HolidayTable());
}

QString nameOf(const QStringList& names, int number)
{
    return number < 1 || number > names.size() ? u"-------"_s : names[number - 1];
}

QString two(int number) { return QString::number(number).rightJustified(2, u'0'); }

void checkDisplay(const QByteArray& body)
{
    static const QStringList days = {u"lunes"_s,   u"martes"_s, u"miércoles"_s, u"jueves"_s,
                                     u"viernes"_s, u"sábado"_s, u"domingo"_s};
    static const QStringList months = {
        u"enero"_s, u"febrero"_s, u"marzo"_s,      u"abril"_s,   u"mayo"_s,      u"junio"_s,
        u"julio"_s, u"agosto"_s,  u"septiembre"_s, u"octubre"_s, u"noviembre"_s, u"diciembre"_s};
    const ClockDisplay display{StatusBlock(body)};
    require(display.isComplete() == (body.size() >= 220));
    const int year = at(body, 11) + (at(body, 11) < 90 ? 2000 : 1900);
    require(display.dateText() ==
            u' ' + nameOf(days, at(body, 8)) + u", "_s + QString::number(at(body, 9)) + u" de "_s +
                nameOf(months, at(body, 10)) + u" de "_s + QString::number(year));
    require(display.timeText() == QString::number(at(body, 7)) + u':' + two(at(body, 6)) + u':' +
                                      two(at(body, 5)) + u' ');
    constexpr std::array inputMasks = {0x08, 0x10, 0x80};
    constexpr std::array statusMasks = {0x01, 0x02, 0x04, 0x08, 0x80};
    for (int i = 0; i < 3; ++i) {
        require(display.isOutputOn(i) == ((at(body, 2) & 1 << i) != 0));
        require(display.isInputActive(i) ==
                ((at(body, 218) & inputMasks.at(static_cast<std::size_t>(i))) == 0));
        require(display.outputFill(i) == (display.isOutputOn(i) ? 0x00FF00U : 0x008000U));
        require(display.inputFill(i) == (display.isInputActive(i) ? 0x00FF00U : 0x008000U));
    }
    for (int i = 0; i < 5; ++i) {
        require(display.isStatusLit(i) ==
                ((at(body, 219) & statusMasks.at(static_cast<std::size_t>(i))) != 0));
        require(display.statusFill(i) == (display.isStatusLit(i) ? 0x0000FFU : 0x000080U));
    }
}

} // namespace

/// Any body of an answer is read into the programme and shown. Each alarm, text and lamp must be
/// what the bytes say, a byte that is missing reads as 0, and a block is written as it was read.
/// The first byte of the input is the code of the answer, and chooses the model and between
/// programme and display.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    Input input(bytes, size);
    const quint8 code = input.byte();
    const QByteArray body = input.rest();

    if ((code & 0x40) != 0)
        checkDisplay(body);
    else
        checkProgramme(body, (code & 0x80) != 0 ? ClockModel::Hct7300 : ClockModel::Hct7200);

    const bool isAnswer = (code & 0x3F) == 8 && body.size() >= 220 && at(body, 0) == 0 &&
                          at(body, 1) == 0 && at(body, 3) == 11 && at(body, 4) == 0;
    require(ProgrammeMessages::isGeneralData(code & 0x3F, body) == isAnswer);
    require(modUtilidades::modelName(at(body, 3), body) ==
            (at(body, 3) != 11                         ? u"Desconocido"_s
             : body.size() <= 12 || at(body, 12) == 30 ? u"HCT7200"_s
                                                       : u"HCT7300"_s));
    return 0;
}
