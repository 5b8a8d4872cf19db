#pragma once

#include <QByteArray>

#include <array>
#include <bitset>
#include <map>

namespace simulator {

/// Collects received firmware lines into an image. A line is 0xDD, count, four bytes of address
/// (least significant first), flag (0; on the last line 1, or 0xFF to ask for a reset), data, the
/// 8-bit sum of address and data bytes, and 0x00. The image has at most 32 MiB.
class FirmwareImage {
public:
    enum class Verdict { Stored, StoredLastWithReset, WrongLength, WrongValue };

    /// Checks a line and stores its bytes. The first line after a last one begins a new image,
    /// unless it repeats that last line.
    Verdict take(const QByteArray& line);
    void clear();

    bool isComplete() const { return m_complete; }
    int lineCount() const { return m_lines; }
    qint64 byteCount() const;
    /// As Intel HEX: data records of 16 bytes at most, linear address records, lines ended by CR
    /// LF.
    QByteArray toIntelHex() const;
    /// The bytes from the lowest to the highest address, with 0xFF in gaps. Empty if nothing was
    /// received or the range is larger than 64 MiB.
    QByteArray toBinary() const;

private:
    static constexpr quint32 pageSize = 1024;
    static constexpr size_t maximumPages = 32UL * 1024;
    struct Page {
        std::array<char, pageSize> bytes{};
        std::bitset<pageSize> present;
    };

    bool store(quint32 address, const QByteArray& data);
    void appendPage(QByteArray& text, quint32 base, const Page& page) const;

    std::map<quint32, Page> m_pages;
    QByteArray m_lastLine;
    bool m_complete = false;
    int m_lines = 0;
};

} // namespace simulator
