#pragma once

#include "IntervalTimer.h"

#include <QTimer>

/// A timer for time-outs. It is early by 1 ms at most, so it is a precise QTimer: a coarse one
/// fires up to 5 % early. Enabling it after it was disabled starts a new interval.
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
