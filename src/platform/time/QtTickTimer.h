#pragma once

#include "SteadyTicks.h"

#include <QTimer>

/// Ticks on a QTimer, which runs only while a wake-up is awaited and during the work that it
/// starts: as long as it runs, Windows keeps the fine time resolution that the pauses within that
/// work need, at the cost of energy. The work ends with `wakeAt` or `sleep`, or when the QTimer
/// expires again.
class QtTickTimer final : public TickTimer {
    Q_OBJECT
public:
    explicit QtTickTimer(QObject* parent = nullptr);

    qint64 now() const override { return m_ticks.now(); }

private:
    void arm(qint64 tick) override;
    void disarm() override { m_timer.stop(); }

    SteadyTicks m_ticks;
    QTimer m_timer{this};
};
