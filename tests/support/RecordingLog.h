#pragma once

#include "StatusLog.h"

#include <QStringList>

class RecordingLog final : public StatusLog {
public:
    QStringList lines;
    int timesShown = 0;

    void Rexistra(const QString& message, bool show) override
    {
        lines.append(message);
        timesShown += show ? 1 : 0;
    }
};
