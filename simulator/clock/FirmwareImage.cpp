#include "FirmwareImage.h"

#include "Bytes.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr qsizetype lineHeaderSize = 7;
constexpr quint8 lastLineFlag = 0x01;
constexpr quint8 resetFlag = 0xFF;

QByteArray hexRecord(quint8 type, quint16 offset, const QByteArray& data)
{
    QByteArray bytes;
    bytes.append(char(data.size())).append(char(offset >> 8)).append(char(offset));
    bytes.append(char(type)).append(data);
    unsigned sum = 0;
    for (const char byte : bytes)
        sum += quint8(byte);
    bytes.append(char(-int(sum)));
    return ':' + bytes.toHex().toUpper() + "\r\n";
}

} // namespace

FirmwareImage::Verdict FirmwareImage::take(const QByteArray& line)
{
    if (line.size() < lineHeaderSize + 2)
        return Verdict::WrongLength;
    const qsizetype count = byteAt(line, 1);
    if (line.size() != count + lineHeaderSize + 2)
        return Verdict::WrongLength;
    quint32 address = 0;
    for (qsizetype at = 5; at >= 2; --at)
        address = address << 8 | byteAt(line, at);
    const quint8 flag = byteAt(line, 6);
    const QByteArray data = line.mid(lineHeaderSize, count);
    unsigned sum = 0;
    for (const char byte : line.mid(2, 4) + data)
        sum += quint8(byte);
    const bool knownFlag = flag == 0 || flag == lastLineFlag || flag == resetFlag;
    if (count == 0 || !knownFlag || byteAt(line, lineHeaderSize + count) != quint8(sum) ||
        byteAt(line, lineHeaderSize + count + 1) != 0)
        return Verdict::WrongValue;
    if (m_complete && line != m_lastLine)
        clear();
    if (!store(address, data))
        return Verdict::WrongValue;
    m_lastLine = line;
    m_complete = flag != 0;
    ++m_lines;
    return flag == resetFlag ? Verdict::StoredLastWithReset : Verdict::Stored;
}

void FirmwareImage::clear()
{
    m_pages.clear();
    m_lastLine.clear();
    m_complete = false;
    m_lines = 0;
}

bool FirmwareImage::store(quint32 address, const QByteArray& data)
{
    for (const char byte : data) {
        const quint32 number = address / pageSize;
        if (!m_pages.contains(number) && m_pages.size() >= maximumPages)
            return false;
        Page& page = m_pages[number];
        page.bytes[address % pageSize] = byte;
        page.present.set(address % pageSize);
        ++address;
    }
    return true;
}

qint64 FirmwareImage::byteCount() const
{
    qint64 bytes = 0;
    for (const auto& [number, page] : m_pages)
        bytes += qint64(page.present.count());
    return bytes;
}

QByteArray FirmwareImage::toIntelHex() const
{
    QByteArray text;
    quint32 linear = 0;
    for (const auto& [number, page] : m_pages) {
        const quint32 base = number * pageSize;
        if (base >> 16 != linear) {
            linear = base >> 16;
            text += hexRecord(4, 0, QByteArray().append(char(linear >> 8)).append(char(linear)));
        }
        appendPage(text, base, page);
    }
    return text + ":00000001FF\r\n";
}

void FirmwareImage::appendPage(QByteArray& text, quint32 base, const Page& page) const
{
    constexpr quint32 recordSize = 16;
    for (quint32 at = 0; at < pageSize;) {
        QByteArray data;
        const quint32 start = at;
        while (at < pageSize && page.present.test(at) && at / recordSize == start / recordSize)
            data.append(page.bytes[at++]);
        if (data.isEmpty())
            ++at;
        else
            text += hexRecord(0, quint16(base + start), data);
    }
}

QByteArray FirmwareImage::toBinary() const
{
    constexpr quint32 maximumSpan = 64U * 1024 * 1024;
    if (m_pages.empty())
        return {};
    const auto& [firstNumber, firstPage] = *m_pages.begin();
    const auto& [lastNumber, lastPage] = *m_pages.rbegin();
    if ((lastNumber - firstNumber) >= maximumSpan / pageSize)
        return {};
    QByteArray image(qsizetype{lastNumber - firstNumber + 1} * pageSize, '\xFF');
    qsizetype first = image.size();
    qsizetype last = 0;
    for (const auto& [number, page] : m_pages) {
        for (quint32 at = 0; at < pageSize; ++at) {
            if (!page.present.test(at))
                continue;
            const qsizetype place = qsizetype{number - firstNumber} * pageSize + at;
            image[place] = page.bytes[at];
            first = std::min(first, place);
            last = std::max(last, place);
        }
    }
    return image.mid(first, last - first + 1);
}

} // namespace simulator
