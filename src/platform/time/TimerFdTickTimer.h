#pragma once

#include "SteadyTicks.h"

class QSocketNotifier;

/// Ticks on a timer of the kernel (timerfd), which expires within 0.1 ms of its tick. A QTimer has
/// whole milliseconds only.
class TimerFdTickTimer final : public TickTimer {
    Q_OBJECT
public:
    explicit TimerFdTickTimer(QObject* parent = nullptr);
    ~TimerFdTickTimer() override;

    /// False when the kernel gave no timer. It then never wakes the program.
    bool isValid() const { return m_descriptor >= 0; }
    qint64 now() const override { return m_ticks.now(); }

private:
    void arm(qint64 tick) override;
    void disarm() override;
    void readable();
    /// Makes the kernel's timer expire at this time of the steady clock, above 0; 0 stops it.
    void setTime(std::chrono::nanoseconds time) const;

    SteadyTicks m_ticks;
    int m_descriptor;
    QSocketNotifier* m_notifier = nullptr;
    bool m_armed = false;
};
