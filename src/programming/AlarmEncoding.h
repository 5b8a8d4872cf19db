#pragma once

#include "Programme.h"

#include <array>

/// How an alarm is packed, one strategy a model: into two bytes for the clock, and its flags into a
/// mask of five bits for the file. `mode` is the alarm mode of the block that the alarm is in.
///
/// Byte 1 is three flags in bits 7 to 5 and the hour in bits 4 to 0, byte 2 two flags in bits 7 and
/// 6 and the minute in bits 5 to 0. Higher bits of hour and minute are lost.
class AlarmEncoding {
public:
    struct Bytes {
        quint8 first = 0;
        quint8 second = 0;

        bool operator==(const Bytes&) const = default;
    };

    static const AlarmEncoding& of(ClockModel model);

    AlarmEncoding() = default;
    AlarmEncoding(const AlarmEncoding&) = delete;
    AlarmEncoding& operator=(const AlarmEncoding&) = delete;
    virtual ~AlarmEncoding() = default;

    Bytes encode(const Alarm& alarm, quint8 mode) const;
    /// Flags that do not travel in this mode come out clear.
    Alarm decode(Bytes bytes, quint8 mode) const;

    /// 0 to 31.
    virtual quint8 mask(const Alarm& alarm, quint8 mode) const = 0;
    /// Takes a mask of 0 to 31 into the alarm; flags that the mask does not speak of stay.
    virtual void applyMask(Alarm& alarm, quint8 mask, quint8 mode) const = 0;

protected:
    /// The five flags that travel, for bits 7, 6 and 5 of byte 1 and bits 7 and 6 of byte 2.
    using Carried = std::array<bool, 5>;
    virtual Carried carried(const Alarm& alarm, quint8 mode) const = 0;
    virtual void takeCarried(Alarm& alarm, const Carried& flags, quint8 mode) const = 0;
};
