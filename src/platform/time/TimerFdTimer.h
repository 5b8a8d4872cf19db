#pragma once

#include "IntervalTimer.h"

class QSocketNotifier;

/// A timer on the kernel's own periodic clock, which does not wait for the work of one tick before
/// it counts towards the next. Ticks missed meanwhile come as one.
///
/// Disabling leaves the clock running until it next expires and stops it then, so a tick that
/// switches the timer off while it works and on again keeps the beat, and a timer that stays off
/// wakes the program once at most.
class TimerFdTimer final : public IntervalTimer {
    Q_OBJECT
public:
    explicit TimerFdTimer(QObject* parent = nullptr);
    ~TimerFdTimer() override;

    /// False when the kernel gave no clock: the timer then never ticks.
    bool isValid() const { return m_descriptor >= 0; }

private:
    void intervalChanged() override;
    void enabledChanged() override;
    void expired();
    /// The clock's period from now on; 0 stops it.
    void arm(std::chrono::milliseconds period);

    int m_descriptor;
    QSocketNotifier* m_notifier = nullptr;
    bool m_armed = false;
};
