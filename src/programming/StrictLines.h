#pragma once

#include "ProgrammeLayout.h"
#include "ProgrammeProblem.h"

#include <QByteArrayView>
#include <QList>

#include <optional>

/// Reads the fields of a configuration file one after the other and notes what is wrong with each.
class StrictLines {
public:
    /// Notes the lines that are missing or too many. A byte order mark of UTF-8 is a warning: the
    /// headers, of which it would be a part, are recognised by position. `text` must outlive it.
    explicit StrictLines(QByteArrayView text);

    /// Passes a header line. Another text is a warning: headers are recognised by position.
    void header();
    /// The whole number of the next field; nothing when there is none in its range. `what` begins
    /// the sentence about it: "Hora del aviso 3 de la salida 1". `hint` ends it.
    std::optional<quint8> number(const QString& what, const QString& hint = {});

    void note(ProgrammeProblem::Kind kind, int line, const QString& text);
    /// The line of the field that was read last, from 1; 0 when it has none.
    int line() const { return m_layout.line(m_field - 1); }
    const QList<ProgrammeProblem>& problems() const { return m_problems; }

private:
    QByteArrayView withoutMark(QByteArrayView text);
    void noteGap(const ProgrammeLayout::Gap& gap);
    void noteEnd();

    QList<ProgrammeProblem> m_problems;
    const ProgrammeLayout m_layout;
    /// The next field.
    int m_field = 0;
};
