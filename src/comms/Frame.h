#pragma once

#include <QByteArray>

#include <array>
#include <optional>

/// The frame of the line, alike in both directions:
///
/// | offset | field |
/// |---|---|
/// | 0 | start: 0x68 when L <= 255, 0x48 when L >= 256 |
/// | 1, 2 | L modulo 256, twice |
/// | 3 | start again |
/// | 4 | station |
/// | 5 | code |
/// | 6 | n bytes of data, n = L - 2, 0 to 509 |
/// | 6 + n | checksum: station, code and data summed in 8 bits |
/// | 7 + n | 0x16 |
namespace frame {

constexpr qsizetype maximumData = 509;
constexpr quint8 shortStart = 0x68;
constexpr quint8 longStart = 0x48;
constexpr quint8 end = 0x16;
/// A clock at this address is not asked for: any station's answer is taken.
constexpr quint8 anyStation = 255;

/// The plain sum of 8 bits, which wraps without notice.
quint8 checksum(quint8 station, quint8 code, const QByteArray& data);

/// A frame as it is written: its first byte goes out alone, ahead of the rest.
struct Encoded {
    QByteArray start;
    QByteArray rest;
};

/// `data` holds up to maximumData bytes.
Encoded encode(quint8 station, quint8 code, const QByteArray& data);

struct Header {
    quint8 station = 0;
    /// L, 2 to 511.
    int length = 0;

    /// Code, data, checksum and end byte are still to come.
    int bytesToCome() const { return length + 1; }
    /// The five bytes as they were received.
    QByteArray bytes() const;
};

/// Finds a frame's header in what the line delivers, whatever the chunks.
class HeaderHunter {
public:
    /// Takes headers of `station` only; of all with anyStation.
    explicit HeaderHunter(quint8 station = anyStation) : m_station(station) {}

    /// One byte in. The header once the last five bytes are one.
    std::optional<Header> take(quint8 byte);

    /// At least so many bytes must still come until a frame is complete, 4 to 8.
    int bytesToCome() const;

private:
    quint8 m_station;
    std::array<quint8, 5> m_window{};
};

} // namespace frame
