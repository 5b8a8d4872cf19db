#pragma once

#include "IntervalTimer.h"

class QSocketNotifier;

/// A timer on a periodic timer of the kernel (timerfd), whose period does not include the work that
/// a tick does. Ticks that were missed meanwhile come as one.
///
/// When it is disabled, the kernel's timer runs on until it next expires, and stops only then. A
/// tick that disables it, works, and enables it again therefore does not delay the next one, and a
/// timer that stays disabled wakes the program once at most.
class TimerFdTimer final : public IntervalTimer {
    Q_OBJECT
public:
    explicit TimerFdTimer(QObject* parent = nullptr);
    ~TimerFdTimer() override;

    /// False when the kernel gave no timer. It then never ticks.
    bool isValid() const { return m_descriptor >= 0; }

private:
    void intervalChanged() override;
    void enabledChanged() override;
    void expired();
    /// Starts the kernel's timer with this period; 0 stops it.
    void arm(std::chrono::milliseconds period);

    int m_descriptor;
    QSocketNotifier* m_notifier = nullptr;
    bool m_armed = false;
};
