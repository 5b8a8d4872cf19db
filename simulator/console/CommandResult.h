#pragma once

#include <QStringList>

namespace simulator {

/// What a command gave: lines for the user, or the reason why it failed.
struct CommandResult {
    QStringList lines;
    QString error;

    static CommandResult failed(const QString& reason) { return {{}, reason}; }
};

} // namespace simulator
