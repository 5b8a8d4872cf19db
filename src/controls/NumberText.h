#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// Whole numbers in one text, for example an hour and a minute, with a separator between them: what
/// a NumberField shows, and how it reads what is pasted or set from outside.
class NumberText {
public:
    struct Field {
        int minimum = 0;
        int maximum = 0;
        /// Shown with leading zeros up to this many digits.
        int width = 1;
        /// The accessible name of the control while the cursor is in this number; the control's own
        /// name if empty.
        QString accessibleName = {};
    };

    /// How many characters of a text are read at most.
    static constexpr qsizetype longestText = 64;

    NumberText(const QList<Field>& fields, QChar separator)
        : m_fields(fields), m_separator(separator)
    {}

    const Field& field(int index) const { return m_fields[index]; }
    QChar separator() const { return m_separator; }
    int lastField() const { return static_cast<int>(m_fields.size()) - 1; }
    /// How many digits the maximum has.
    qsizetype digits(int field) const { return QString::number(m_fields[field].maximum).size(); }
    int clamped(int field, int value) const;

    QString textOf(const QList<int>& values) const;
    /// The numbers of a text that textOf has made.
    QList<int> valuesOf(const QString& text) const;

    /// `values` after a text was pasted into `field`. A text with all numbers replaces all of them.
    QList<int> pasted(const QString& text, const QList<int>& values, int field) const;
    /// `values` after they were replaced by a text from outside.
    QList<int> corrected(const QString& text, const QList<int>& values) const;

private:
    QList<int> taken(QStringList numbers, QList<int> values, int field) const;

    const QList<Field> m_fields;
    const QChar m_separator;
};
