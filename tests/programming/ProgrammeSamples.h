#pragma once

#include "Programme.h"

#include <QByteArray>

#include <initializer_list>

/// Programmes and answers that several tests use.
namespace samples {

inline Alarm alarm(int hour, int minute, std::initializer_list<DayFlag> days)
{
    Alarm made;
    made.Hour = static_cast<quint8>(hour);
    made.Minute = static_cast<quint8>(minute);
    for (const DayFlag day : days)
        made.set(day, true);
    return made;
}

inline Alarm onWorkingDays(int hour, int minute)
{
    using enum DayFlag;
    return alarm(hour, minute, {Monday, Tuesday, Wednesday, Thursday, Friday});
}

/// A general-data answer of 220 bytes for the model; all other bytes are zero.
inline QByteArray generalData(ClockModel model)
{
    QByteArray block(220, '\0');
    block[3] = 11;
    block[12] = model == ClockModel::Hct7200 ? 30 : 31;
    return block;
}

/// Block 1: duration 5, mode 1, alarm 1 at 8:45 on all five days. Block 3: mode 4, alarm 32.
inline QByteArray someBlocks(ClockModel model)
{
    QByteArray data = generalData(model);
    data.replace(14, 6, QByteArray::fromHex("050107000904"));
    data.replace(20, 2, QByteArray::fromHex("e8ed"));
    data.replace(20 + 132 + 62, 2, QByteArray::fromHex("973b"));
    return data;
}

inline QByteArray holidaysAnswer()
{
    QByteArray body(66, '\0');
    body[0] = static_cast<char>(0xD9);
    return body;
}

} // namespace samples
