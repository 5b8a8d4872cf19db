#pragma once

#include "LogLines.h"

#include <utility>

/// The cursor of a read-only text: its position, and the anchor where the selection begins. The
/// selection is the text between the two.
class LogCursor {
public:
    using Place = LogLines::Place;
    using Range = std::pair<Place, Place>;

    /// The step of a move, and of a selection by mouse.
    enum class Unit { Character, Word, Line };

    explicit LogCursor(const LogLines& lines) : m_lines(lines) {}

    Place anchor() const { return m_anchor; }
    Place position() const { return m_position; }
    bool hasSelection() const { return m_anchor != m_position; }
    /// In the order of the text.
    Range selection() const { return std::minmax(m_anchor, m_position); }

    void select(Place anchor, Place position);

    /// Selects the unit at a place.
    void begin(Place place, Unit unit);
    /// Extends the selection from the unit of begin() to a place, in whole units.
    void extend(Place place);

    /// The unit at a place: an empty range for Character; the word, or the gap between words, and
    /// an empty range in an empty line; the line with its end.
    Range unitAt(Place place, Unit unit) const;
    /// The start of the next character or word, also on the next line.
    Place next(Unit unit) const;
    Place previous(Unit unit) const;

private:
    const LogLines& m_lines;
    Place m_anchor;
    Place m_position;
    Unit m_unit = Unit::Character;
    Range m_begun;
};
