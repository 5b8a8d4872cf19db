#include "TickTimer.h"

#include "BeatTimer.h"

#ifdef Q_OS_LINUX
#include "TimerFdTimer.h"
#endif

std::unique_ptr<IntervalTimer> makeTickTimer()
{
#ifdef Q_OS_LINUX
    auto timer = std::make_unique<TimerFdTimer>();
    if (timer->isValid())
        return timer;
#endif
    return std::make_unique<BeatTimer>();
}
