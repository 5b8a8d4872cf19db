#pragma once

#include "ClockModel.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// A configuration file that the command line names.
class ProgrammeInput {
public:
    /// Reads it.
    explicit ProgrammeInput(const QString& path);

    const QString& path() const { return m_path; }
    bool isReadable() const { return m_isReadable; }
    /// One byte more than ProgrammeFile::maximumBytes at most.
    const QByteArray& text() const { return m_text; }
    /// Why it must neither be sent nor compared, in Spanish: it cannot be read, or not as it is
    /// written. Nothing when it is good.
    std::optional<QString> refusal() const;

private:
    const QString m_path;
    QByteArray m_text;
    bool m_isReadable = false;
};
