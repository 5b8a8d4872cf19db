#pragma once

#include "ProgrammeProblem.h"

#include <QByteArrayView>
#include <QList>

#include <optional>

/// Reads the lines of a configuration file one after the other and notes what is wrong with each.
class StrictLines {
public:
    /// A byte order mark of UTF-8 is a warning: the headers, of which it would be a part, are
    /// recognised by position.
    explicit StrictLines(QByteArrayView text);

    /// Passes a header line. Another text is a warning: headers are recognised by position.
    void header(QByteArrayView expected);
    /// The whole number of the next line; nothing when there is none from 0 to `last`. `what`
    /// begins the sentence about it: "Hora del aviso 3 de la salida 1". `hint` ends it.
    std::optional<quint8> number(const QString& what, int last, const QString& hint = {});
    /// Notes the lines that are missing or too many. Call it after the last line.
    void end();

    void note(ProgrammeProblem::Kind kind, int line, const QString& text);
    /// The line that was read last, from 1.
    int line() const { return m_line; }
    const QList<ProgrammeProblem>& problems() const { return m_problems; }

private:
    std::optional<QByteArrayView> next();

    QByteArrayView m_rest;
    int m_line = 0;
    /// 0 while no line is missing.
    int m_firstMissing = 0;
    QList<ProgrammeProblem> m_problems;
};
