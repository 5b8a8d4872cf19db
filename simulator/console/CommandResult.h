#pragma once

#include <QStringList>

namespace simulator {

/// The result of a command: lines for the user, or the reason of a failure.
struct CommandResult {
    QStringList lines;
    QString error;

    static CommandResult failed(const QString& reason) { return {{}, reason}; }
};

} // namespace simulator
