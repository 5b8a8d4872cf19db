#include "Input.h"
#include "ProgrammeMessages.h"

/// Any body of an answer to the request for holidays. One that is taken has its selector, an
/// acceptance and 66 bytes or more; each date is what the bytes say, and the table is written as it
/// was read. The first byte of the input is the code of the answer.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    Input input(bytes, size);
    const quint8 code = input.byte();
    const QByteArray body = input.rest();
    const bool isAnswer =
        code == 8 && body.size() >= 66 && body.startsWith(QByteArray("\xD9\x00", 2));
    require(ProgrammeMessages::isHolidays(code, body) == isAnswer);
    if (!isAnswer)
        return 0;

    const HolidayTable table = ProgrammeMessages::holidaysOf(body);
    const auto at = [&](std::size_t index) {
        return static_cast<quint8>(body[static_cast<qsizetype>(index)]);
    };
    for (std::size_t i = 0; i < 16; ++i)
        require(table.holidays[i] == Holiday{at(2 + 2 * i), at(3 + 2 * i)});
    for (std::size_t i = 0; i < 8; ++i)
        require(table.vacations[i] ==
                VacationPeriod{at(34 + 4 * i), at(35 + 4 * i), at(36 + 4 * i), at(37 + 4 * i)});
    const QByteArray written = ProgrammeMessages::holidays(table);
    require(written.size() == 66 && written.startsWith(QByteArray("\xD2\x00", 2)));
    require(written.sliced(2) == body.sliced(2, 64));
    return 0;
}
