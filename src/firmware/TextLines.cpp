#include "TextLines.h"

#include <cstring>

namespace {

constexpr qsizetype chunkSize = 64LL * 1024;

/// The first `wanted` between `from` and `to`; `to` when there is none.
const char* find(char wanted, const char* from, const char* to)
{
    const void* found = std::memchr(from, wanted, static_cast<std::size_t>(to - from));
    return found ? static_cast<const char*>(found) : to;
}

/// Removes spaces only: a tab before or after a record makes it a bad line.
QByteArrayView withoutBlanks(const char* from, const char* to)
{
    while (from != to && *from == ' ')
        ++from;
    while (from != to && to[-1] == ' ')
        --to;
    return QByteArrayView(from, to);
}

} // namespace

TextLines::TextLines(QIODevice& device)
    : m_device(device),
      m_buffer(longestLine + 1 + chunkSize, Qt::Uninitialized),
      m_cursor(m_buffer.constData()),
      m_end(m_cursor),
      m_lineFeed(m_cursor)
{}

TextLines::Status TextLines::next(QByteArrayView& line)
{
    for (;;) {
        const char* const end = lineEnd();
        if (end == m_end && !m_allRead) {
            if (const Status status = refill(); status != Status::Line)
                return status;
            continue;
        }
        line = withoutBlanks(m_cursor, end);
        const bool last = end == m_end;
        m_cursor = last ? end : end + 1;
        if (line.size() > longestLine)
            return Status::TooLong;
        if (!line.isEmpty())
            return Status::Line;
        if (last)
            return Status::End;
    }
}

const char* TextLines::lineEnd()
{
    if (m_lineFeed < m_cursor)
        m_lineFeed = find('\n', m_cursor, m_end);
    return find('\r', m_cursor, m_lineFeed);
}

/// Reads the next chunk and keeps the beginning of an unfinished line before it.
TextLines::Status TextLines::refill()
{
    const QByteArrayView begun = withoutBlanks(m_cursor, m_end);
    if (begun.size() > longestLine)
        return Status::TooLong;

    // Keep one blank of those at its end: if more text follows, the line is bad in any case.
    const bool blankBehind = !begun.isEmpty() && m_end[-1] == ' ';
    char* const buffer = m_buffer.data();
    std::memmove(buffer, begun.data(), static_cast<std::size_t>(begun.size()));
    qsizetype kept = begun.size();
    if (blankBehind)
        buffer[kept++] = ' ';

    const qint64 count = m_device.read(buffer + kept, chunkSize);
    m_allRead = count == 0;
    m_bytesRead += count;
    if (count < 0 || m_bytesRead > largestText)
        return Status::Failed;

    m_cursor = buffer;
    m_end = buffer + kept + count;
    m_lineFeed = find('\n', buffer + kept, m_end);
    return Status::Line;
}
