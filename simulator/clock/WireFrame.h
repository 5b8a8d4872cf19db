#pragma once

#include <QByteArray>

namespace simulator {

/// One message on the line. The wire form is: start, L, L, start, station, code, data, the 8-bit
/// sum of station, code and data, 0x16. L is 2 + the data's length modulo 256; the start byte is
/// 0x68 below 256 and 0x48 from there on.
struct WireFrame {
    quint8 station = 0;
    quint8 code = 0;
    QByteArray data;

    static constexpr qsizetype maximumData = 509;
    /// The sum that the frame carries.
    quint8 checksum() const;
};

/// The wire form; data beyond 509 bytes are left out.
QByteArray encoded(const WireFrame& frame);

/// Upper-case hexadecimal with a blank between the bytes.
QByteArray hexadecimal(const QByteArray& bytes);

} // namespace simulator
