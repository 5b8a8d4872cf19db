#pragma once

#include "Programme.h"

#include <array>

/// Packs an alarm into two bytes for the clock, and its day flags into a mask of five bits for the
/// file. There is one strategy for each model. `mode` is the mode of the alarm's block.
///
/// Byte 1 has three flags in bits 7 to 5 and the hour in bits 4 to 0, byte 2 two flags in bits 7
/// and 6 and the minute in bits 5 to 0. Higher bits of hour and minute are lost.
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
    /// Flags that are not transmitted in this mode become clear.
    Alarm decode(Bytes bytes, quint8 mode) const;

    /// The mask of the file, 0 to 31.
    virtual quint8 mask(const Alarm& alarm, quint8 mode) const = 0;
    /// Sets the alarm's flags from a mask of 0 to 31. Flags that the mask does not describe stay.
    virtual void applyMask(Alarm& alarm, quint8 mask, quint8 mode) const = 0;

protected:
    /// The five flags that are transmitted, in this order: bits 7, 6 and 5 of byte 1, bits 7 and 6
    /// of byte 2.
    using Carried = std::array<bool, 5>;
    virtual Carried carried(const Alarm& alarm, quint8 mode) const = 0;
    virtual void takeCarried(Alarm& alarm, const Carried& flags, quint8 mode) const = 0;
};
