#pragma once

#include <QString>

/// The status log: what happened, one line an entry, for the operator.
class StatusLog {
public:
    virtual ~StatusLog() = default;

    /// Appends a line with date and time. With `show` the log window is shown too.
    virtual void Rexistra(const QString& message, bool show) = 0;
};
