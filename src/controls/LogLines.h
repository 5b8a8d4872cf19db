#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <algorithm>
#include <compare>
#include <limits>

/// The lines of a text that only grows, without limit. A line needs its bytes in UTF-8 and a few
/// more. The last line is the one without an end; it exists even when it is empty.
///
/// Characters are counted in UTF-16 units. The end of a line counts as one.
class LogLines {
public:
    struct Place {
        qsizetype line = 0;
        qsizetype column = 0;
        auto operator<=>(const Place&) const = default;
    };

    /// Appends a text, in which each '\n' ends a line.
    void append(QStringView text);

    qsizetype lineCount() const { return m_lineEnds + 1; }
    /// Without its end. `number` counts from 0 and must be below lineCount().
    QString line(qsizetype number) const;

    qsizetype size() const { return m_size; }
    Place end() const { return {m_lineEnds, line(m_lineEnds).size()}; }
    /// How many characters are before a place.
    qsizetype offset(Place place) const;
    /// The place after so many characters; the nearest place if there are fewer.
    Place place(qsizetype offset) const;
    /// The text from one offset to another, both from 0 to size().
    QString text(qsizetype from, qsizetype to) const;

    /// The toolkit counts characters as int: a larger offset becomes the largest int.
    static int toInt(qsizetype offset)
    {
        return static_cast<int>(std::min(offset, qsizetype(std::numeric_limits<int>::max())));
    }

private:
    /// A line is searched for from the first byte of its block.
    static constexpr qsizetype linesPerBlock = 256;

    struct Block {
        QByteArray utf8;
        qsizetype firstCharacter = 0;
    };

    qsizetype blockOf(qsizetype offset) const;

    QList<Block> m_blocks{Block()};
    qsizetype m_lineEnds = 0;
    qsizetype m_size = 0;
};
