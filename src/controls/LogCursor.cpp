#include "LogCursor.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <tuple>

namespace {

QTextBoundaryFinder finderIn(const QString& line, LogCursor::Unit unit, qsizetype column)
{
    QTextBoundaryFinder finder(unit == LogCursor::Unit::Word ? QTextBoundaryFinder::Word
                                                             : QTextBoundaryFinder::Grapheme,
                               line);
    finder.setPosition(column);
    return finder;
}

/// For words the cursor stops only at their beginning.
bool isStop(const QTextBoundaryFinder& finder, LogCursor::Unit unit)
{
    return unit == LogCursor::Unit::Character ||
           finder.boundaryReasons().testFlag(QTextBoundaryFinder::StartOfItem);
}

} // namespace

void LogCursor::select(Place anchor, Place position)
{
    m_anchor = anchor;
    m_position = position;
    m_unit = Unit::Character;
    m_begun = {anchor, anchor};
}

void LogCursor::begin(Place place, Unit unit)
{
    m_unit = unit;
    m_begun = unitAt(place, unit);
    std::tie(m_anchor, m_position) = m_begun;
}

void LogCursor::extend(Place place)
{
    const auto [start, end] = unitAt(place, m_unit);
    const bool backwards = start < m_begun.first;
    m_anchor = backwards ? m_begun.second : m_begun.first;
    m_position = backwards ? start : std::max(end, m_begun.second);
}

LogCursor::Range LogCursor::unitAt(Place place, Unit unit) const
{
    if (unit == Unit::Character)
        return {place, place};
    const QString line = m_lines.line(place.line);
    if (unit == Unit::Line)
        return {{place.line, 0},
                place.line + 1 < m_lines.lineCount() ? Place{place.line + 1, 0}
                                                     : Place{place.line, line.size()}};
    if (line.isEmpty())
        return {place, place};
    // After the last character it is the last word.
    QTextBoundaryFinder finder = finderIn(line, unit, std::min(place.column, line.size() - 1));
    if (!finder.isAtBoundary())
        finder.toPreviousBoundary();
    const qsizetype start = finder.position();
    const qsizetype end = finder.toNextBoundary();
    return {{place.line, start}, {place.line, end < 0 ? line.size() : end}};
}

LogCursor::Place LogCursor::next(Unit unit) const
{
    const QString line = m_lines.line(m_position.line);
    if (m_position.column == line.size())
        return m_position.line + 1 < m_lines.lineCount() ? Place{m_position.line + 1, 0}
                                                         : m_position;
    QTextBoundaryFinder finder = finderIn(line, unit, m_position.column);
    while (finder.toNextBoundary() >= 0) {
        if (isStop(finder, unit))
            return {m_position.line, finder.position()};
    }
    return {m_position.line, line.size()};
}

LogCursor::Place LogCursor::previous(Unit unit) const
{
    if (m_position.column == 0)
        return m_position.line > 0
                   ? Place{m_position.line - 1, m_lines.line(m_position.line - 1).size()}
                   : m_position;
    const QString line = m_lines.line(m_position.line);
    QTextBoundaryFinder finder = finderIn(line, unit, m_position.column);
    while (finder.toPreviousBoundary() >= 0) {
        if (isStop(finder, unit))
            return {m_position.line, finder.position()};
    }
    return {m_position.line, 0};
}
