#pragma once

#include <QString>

/// The status log as every subsystem sees it.
class StatusLog {
public:
    virtual ~StatusLog() = default;

    /// Appends a line stamped with date and time; with `show` the log window comes up too.
    virtual void Rexistra(const QString& message, bool show) = 0;
};
