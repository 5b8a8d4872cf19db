#include "WireFrame.h"

namespace simulator {

quint8 WireFrame::checksum() const
{
    unsigned sum = station + unsigned(code);
    for (const char byte : data)
        sum += quint8(byte);
    return quint8(sum);
}

QByteArray encoded(const WireFrame& frame)
{
    WireFrame cut = frame;
    cut.data.truncate(WireFrame::maximumData);
    const qsizetype length = cut.data.size() + 2;
    const char start = length < 256 ? '\x68' : '\x48';
    QByteArray wire;
    wire.reserve(length + 6);
    wire.append(start).append(char(length)).append(char(length)).append(start);
    wire.append(char(cut.station)).append(char(cut.code)).append(cut.data);
    wire.append(char(cut.checksum())).append('\x16');
    return wire;
}

QByteArray hexadecimal(const QByteArray& bytes) { return bytes.toHex(' ').toUpper(); }

} // namespace simulator
