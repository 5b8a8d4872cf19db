#pragma once

#include "LogLines.h"

#include <utility>

/// The cursor of a text that is only read: where it stands, and from where on the text up to it is
/// selected.
class LogCursor {
public:
    using Place = LogLines::Place;
    using Range = std::pair<Place, Place>;

    /// What a move steps over, and what a selection by mouse grows by.
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
    /// Selects on from the unit of begin() up to a place, in such units.
    void extend(Place place);

    /// The character (empty), the word or the stretch between words, or the line with its end.
    Range unitAt(Place place, Unit unit) const;
    /// The start of the next character or word; over the end of a line too.
    Place next(Unit unit) const;
    Place previous(Unit unit) const;

private:
    const LogLines& m_lines;
    Place m_anchor;
    Place m_position;
    Unit m_unit = Unit::Character;
    Range m_begun;
};
