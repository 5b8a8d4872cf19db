#pragma once

#include <QByteArray>

#include <array>
#include <bitset>
#include <map>

namespace simulator {

/// Assembles received firmware lines into a map of addresses. A line is 0xDD, count, the address
/// in four bytes with the least significant first, the flag (0; on the last line 1, or 0xFF to ask
/// for a reset), the data, the 8-bit sum of address and data, and 0x00. Holds at most 32 MiB.
class FirmwareImage {
public:
    enum class Verdict { Stored, StoredLastWithReset, WrongLength, WrongValue };

    /// Checks a line and stores its bytes. The first line after a last one begins a new image,
    /// unless it is that last line repeated.
    Verdict take(const QByteArray& line);
    void clear();

    bool isComplete() const { return m_complete; }
    int lineCount() const { return m_lines; }
    qint64 byteCount() const;
    /// Records of 16 bytes at most under linear address records, lines ended by CR LF.
    QByteArray toIntelHex() const;
    /// From the lowest to the highest address, gaps filled with 0xFF; empty where nothing was
    /// received or the span is above 64 MiB.
    QByteArray toBinary() const;

private:
    static constexpr quint32 pageSize = 1024;
    static constexpr size_t maximumPages = 32 * 1024;
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
