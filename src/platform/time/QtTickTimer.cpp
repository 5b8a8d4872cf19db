#include "QtTickTimer.h"

#include <algorithm>

using namespace std::chrono_literals;

QtTickTimer::QtTickTimer(QObject* parent) : TickTimer(parent)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (!expired())
            m_timer.stop();
    });
}

void QtTickTimer::arm(qint64 tick)
{
    const auto rest = m_ticks.timeOf(tick) - SteadyTicks::Clock::now();
    m_timer.start(std::max(std::chrono::ceil<std::chrono::milliseconds>(rest), 1ms));
}
