#include "LogLines.h"

#include <QStringDecoder>

#include <algorithm>

namespace {

/// The offset in bytes at which a line of a block begins.
qsizetype beginning(QByteArrayView utf8, qsizetype line)
{
    qsizetype at = 0;
    while (line-- > 0)
        at = utf8.indexOf('\n', at) + 1;
    return at;
}

/// QString::fromUtf8 would drop a byte order mark at the start.
QString decoded(QByteArrayView utf8)
{
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return decode(utf8);
}

} // namespace

void LogLines::append(QStringView text)
{
    while (!text.isEmpty()) {
        const qsizetype end = text.indexOf(u'\n');
        const QStringView piece = end < 0 ? text : text.first(end + 1);
        text = text.sliced(piece.size());
        m_blocks.last().utf8 += piece.toUtf8();
        m_size += piece.size();
        if (end < 0)
            return;
        if (++m_lineEnds % linesPerBlock == 0) {
            m_blocks.last().utf8.squeeze();
            m_blocks.append({{}, m_size});
        }
    }
}

QString LogLines::line(qsizetype number) const
{
    const QByteArray& utf8 = m_blocks[number / linesPerBlock].utf8;
    const qsizetype start = beginning(utf8, number % linesPerBlock);
    const qsizetype end = utf8.indexOf('\n', start);
    return decoded(QByteArrayView(utf8).sliced(start, (end < 0 ? utf8.size() : end) - start));
}

qsizetype LogLines::offset(Place place) const
{
    const Block& block = m_blocks[place.line / linesPerBlock];
    const qsizetype start = beginning(block.utf8, place.line % linesPerBlock);
    return block.firstCharacter + decoded(QByteArrayView(block.utf8).first(start)).size() +
           place.column;
}

LogLines::Place LogLines::place(qsizetype offset) const
{
    offset = std::clamp(offset, qsizetype(0), m_size);
    const qsizetype number = blockOf(offset);
    const Block& block = m_blocks[number];
    const QString text = decoded(block.utf8);
    const QStringView before = QStringView(text).first(offset - block.firstCharacter);
    return {number * linesPerBlock + before.count(u'\n'),
            before.size() - before.lastIndexOf(u'\n') - 1};
}

QString LogLines::text(qsizetype from, qsizetype to) const
{
    QString result;
    result.reserve(to - from);
    for (qsizetype number = blockOf(from); from < to; ++number) {
        const QString block = decoded(m_blocks[number].utf8);
        const qsizetype start = from - m_blocks[number].firstCharacter;
        const QStringView part =
            QStringView(block).sliced(start).first(std::min(to - from, block.size() - start));
        result += part;
        from += part.size();
    }
    return result;
}

/// The last block that begins at or before `offset`.
qsizetype LogLines::blockOf(qsizetype offset) const
{
    const auto next = std::upper_bound(
        m_blocks.begin(), m_blocks.end(), offset,
        [](qsizetype value, const Block& block) { return value < block.firstCharacter; });
    return next - m_blocks.begin() - 1;
}
