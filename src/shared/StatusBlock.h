#pragma once

#include "ClockModel.h"

#include <QByteArray>

/// Reads the status block: the body of the answer to a general-data request, at least 220 bytes
/// from this clock family, 5 or more from others. The block may have any length: a missing byte
/// reads as 0. All values are plain binary, not BCD.
///
/// | byte | meaning |
/// |---|---|
/// | 0, 1 | status, 0 when good |
/// | 2 | outputs, bits 0 to 2, set while the output is on |
/// | 3 | device type, 11 for this family |
/// | 4 | refusal, 0 when the clock answers |
/// | 5, 6, 7 | seconds, minutes, hours |
/// | 8 | day of the week, 1 Monday to 7 Sunday |
/// | 9, 10, 11 | day, month, year in two digits |
/// | 12 | model, 30 for the HCT-7200, any other for the HCT-7300 |
/// | 14 + 2b, 15 + 2b | duration and mode of alarm block b (0 to 2) |
/// | 20 + 66b + 2i | two bytes of alarm i (0 to 31) of block b |
/// | 218 | inputs: bits 3 P1, 4 P2, 7 Sensor; clear while the input is active |
/// | 219 | flags: bits 0, 1, 2 (remote control), 3, 7 |
class StatusBlock {
public:
    explicit StatusBlock(const QByteArray& block) : m_block(block) {}

    /// The length of a block that has all bytes of this family.
    static constexpr qsizetype fullSize = 220;
    static constexpr quint8 familyType = 11;
    static constexpr quint8 hct7200 = 30;

    bool isFull() const { return m_block.size() >= fullSize; }
    quint8 byte(qsizetype index) const;

    quint8 outputs() const { return byte(2); }
    quint8 deviceType() const { return byte(3); }
    quint8 refusal() const { return byte(4); }
    quint8 seconds() const { return byte(5); }
    quint8 minutes() const { return byte(6); }
    quint8 hours() const { return byte(7); }
    quint8 weekday() const { return byte(8); }
    quint8 day() const { return byte(9); }
    quint8 month() const { return byte(10); }
    quint8 year() const { return byte(11); }
    /// By byte 12: the HCT-7200 for 30 or when the byte is missing, otherwise the HCT-7300.
    ClockModel model() const;
    /// `block` is 0 to 2, `alarm` 0 to 31.
    quint8 blockDuration(int block) const { return byte(14 + 2 * block); }
    quint8 blockMode(int block) const { return byte(15 + 2 * block); }
    quint8 alarmByte1(int block, int alarm) const { return byte(20 + 66 * block + 2 * alarm); }
    quint8 alarmByte2(int block, int alarm) const { return byte(21 + 66 * block + 2 * alarm); }
    quint8 inputs() const { return byte(218); }
    quint8 flags() const { return byte(219); }
    /// Bit 2 of the flags: the outputs are under remote control.
    bool isRemoteControlled() const { return (flags() & 0x04) != 0; }

private:
    QByteArray m_block;
};
