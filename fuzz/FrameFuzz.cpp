#include "Frame.h"
#include "Input.h"

namespace {

quint8 unsignedAt(const QByteArray& line, qsizetype at) { return static_cast<quint8>(line[at]); }

/// L when a header begins at `at`, else 0.
int headerLength(const QByteArray& line, qsizetype at, quint8 station)
{
    const quint8 start = unsignedAt(line, at);
    const int length = unsignedAt(line, at + 1) + (start == 0x48 ? 256 : 0);
    const bool isHeader = (start == 0x48 || start == 0x68) && unsignedAt(line, at + 3) == start &&
                          line[at + 1] == line[at + 2] && length >= 2 &&
                          (station == 255 || unsignedAt(line, at + 4) == station);
    return isHeader ? length : 0;
}

/// The frame whose header stands at `at` and has arrived whole: written again, it is the same up to
/// its sum, and the sums agree.
void checkFrame(const QByteArray& line, qsizetype at, const frame::Header& header)
{
    const auto code = unsignedAt(line, at + 5);
    const QByteArray data = line.mid(at + 6, header.length - 2);
    require(data.size() == header.length - 2 && data.size() <= frame::maximumData);
    int sum = header.station + code;
    for (const char byte : data)
        sum += static_cast<quint8>(byte);
    require(frame::checksum(header.station, code, data) == sum % 256);

    const frame::Encoded encoded = frame::encode(header.station, code, data);
    require(encoded.start == line.mid(at, 1));
    require(encoded.rest.chopped(2) == line.mid(at + 1, header.length + 3));
    require(encoded.rest.last(2) == QByteArray(1, static_cast<char>(sum % 256)) + '\x16');
}

} // namespace

/// Any bytes arrive. The hunter must find those headers that a search of all bytes finds, and no
/// other. A frame that begins where the one before has ended is decoded, too. The first byte of the
/// input is the station.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    Input input(bytes, size);
    const quint8 station = input.byte();
    const QByteArray line = input.rest();
    frame::HeaderHunter hunter(station);
    qsizetype frameEnd = 0;
    for (qsizetype last = 0; last < line.size(); ++last) {
        const auto header = hunter.take(unsignedAt(line, last));
        const qsizetype at = last - 4;
        const int length = at < 0 ? 0 : headerLength(line, at, station);
        require(header.has_value() == (length != 0));
        if (!header)
            continue;
        require(header->length == length && header->station == unsignedAt(line, last));
        require(header->bytes() == line.mid(at, 5));
        const qsizetype end = last + 1 + header->bytesToCome();
        if (at < frameEnd || end > line.size())
            continue;
        checkFrame(line, at, *header);
        frameEnd = end;
    }
    return 0;
}
