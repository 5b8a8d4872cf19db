#pragma once

#include <QByteArrayView>
#include <QList>

#include <array>
#include <optional>

/// Which line of a configuration file is which field, also when lines of a block are missing or too
/// many: the next header that is found shows how many, and the lines where they may be are those
/// for which most others fit their fields. ProgrammeFile counts lines instead.
class ProgrammeLayout {
public:
    static constexpr int fieldCount = 363;

    /// The largest value of each kind of line; the smallest is 0.
    static constexpr int lastHour = 23;
    static constexpr int lastMinute = 59;
    static constexpr int lastMask = 31;
    static constexpr int lastDay = 31;
    static constexpr int lastMonth = 12;

    struct Field {
        /// The text of a header; empty for a number.
        QByteArrayView header;
        /// The largest value of a number; the smallest is 0.
        int last = 0;
    };
    static const Field& field(int index);

    /// Adjacent lines that are missing, or too many.
    struct Gap {
        /// How many there are too many; negative when they are missing.
        int surplus;
        /// They may be missing before each of the lines `first` to `last`, or begin with each of
        /// them. Lines are counted from 1.
        int first;
        int last;
        /// The field that is missing first, or before which the first line is too many.
        int field;

        /// The header of the block that they are in.
        QByteArrayView block() const;
        bool isMissingHeader() const;
    };

    /// `text` must outlive it.
    explicit ProgrammeLayout(QByteArrayView text);

    /// The text of a field without blanks around it; nothing when there is none, or when a gap
    /// makes it uncertain which it is.
    std::optional<QByteArrayView> text(int field) const;
    /// The number of its line, from 1; 0 when it has none.
    int line(int field) const { return m_lines[static_cast<std::size_t>(field)] + 1; }
    /// Those before the end of the file.
    const QList<Gap>& gaps() const { return m_gaps; }
    /// How many lines are too many at the end of the file; negative when they are missing there.
    int surplusAtEnd() const { return m_surplusAtEnd; }
    int lineCount() const { return static_cast<int>(m_texts.size()); }

private:
    /// From one header that was found to the next, or to the end of the file.
    struct Span {
        int field;
        int endField;
        int line;
        int endLine;
    };

    bool fits(int field, int line) const;
    /// The line of a header, from `line` on; first where it is when nothing is missing.
    std::optional<int> lineOfHeader(int header, int expected, int line) const;
    /// An index; -1 for none.
    void setLine(int field, int line) { m_lines[static_cast<std::size_t>(field)] = line; }
    void place(const Span& span);
    void placeAround(const Span& span);

    QList<QByteArrayView> m_texts;
    /// The index of each field's line; -1 for none.
    std::array<int, fieldCount> m_lines{};
    QList<Gap> m_gaps;
    int m_surplusAtEnd = 0;
};
