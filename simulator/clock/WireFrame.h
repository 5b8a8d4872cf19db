#pragma once

#include <QByteArray>

namespace simulator {

/// One frame. On the line it is: start, L, L, start, station, code, data, the 8-bit sum of station,
/// code and data bytes, 0x16. With n data bytes, L is (2 + n) modulo 256, and the start byte is
/// 0x68 when 2 + n is below 256, otherwise 0x48.
struct WireFrame {
    quint8 station = 0;
    quint8 code = 0;
    QByteArray data;

    static constexpr qsizetype maximumData = 509;
    /// The checksum of this frame.
    quint8 checksum() const;
};

/// The bytes on the line. Data after the first 509 bytes are left out.
QByteArray encoded(const WireFrame& frame);

/// Upper-case hexadecimal with a blank between the bytes.
QByteArray hexadecimal(const QByteArray& bytes);

} // namespace simulator
