#pragma once

#include "IntervalTimer.h"

#include <QTimer>

/// Keeps its beat while a tick is being worked on, so that a tick does not come late by the length
/// of the one before: disabled it runs on until its next beat and only then falls silent. So the
/// system also keeps its fine resolution of time for the pauses that a tick makes.
class BeatTimer final : public IntervalTimer {
    Q_OBJECT
public:
    explicit BeatTimer(QObject* parent = nullptr);

private:
    void intervalChanged() override;
    void enabledChanged() override;
    void beat();

    QTimer m_timer;
};
