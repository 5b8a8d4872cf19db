#pragma once

#include "IntervalTimer.h"

#include <QTimer>

/// For time-outs: never early by more than the system's own millisecond, so a precise QTimer (a
/// coarse one fires up to 5 % before its time). Enabled anew after it was disabled it starts a new
/// interval.
class PreciseTimer final : public IntervalTimer {
    Q_OBJECT
public:
    explicit PreciseTimer(QObject* parent = nullptr);

private:
    void intervalChanged() override { apply(); }
    void enabledChanged() override { apply(); }
    void apply();

    QTimer m_timer;
};
