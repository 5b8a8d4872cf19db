#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <compare>

/// The lines of a text that only grows, without limit. A line takes its bytes in UTF-8 and a few
/// more. The last line is the one that has no end yet; it is there even when it is empty.
///
/// Characters are counted in UTF-16 units, with one for the end of a line.
class LogLines {
public:
    struct Place {
        qsizetype line = 0;
        qsizetype column = 0;
        auto operator<=>(const Place&) const = default;
    };

    /// Each '\n' in it ends a line.
    void append(QStringView text);

    qsizetype lineCount() const { return m_lineEnds + 1; }
    /// Without its end. `number` counts from 0 and must be below lineCount().
    QString line(qsizetype number) const;

    qsizetype size() const { return m_size; }
    Place end() const { return {m_lineEnds, line(m_lineEnds).size()}; }
    /// The characters before a place.
    qsizetype offset(Place place) const;
    /// The place behind so many characters; the nearest one where there are not so many.
    Place place(qsizetype offset) const;
    /// The characters from one offset up to another, both between 0 and size().
    QString text(qsizetype from, qsizetype to) const;

private:
    /// Lines are looked for within a block from its first byte on.
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
