#include "SystemTickTimer.h"

#include "QtTickTimer.h"

#ifdef Q_OS_LINUX
#include "TimerFdTickTimer.h"
#endif

std::unique_ptr<TickTimer> makeTickTimer()
{
#ifdef Q_OS_LINUX
    auto timer = std::make_unique<TimerFdTickTimer>();
    if (timer->isValid())
        return timer;
#endif
    return std::make_unique<QtTickTimer>();
}
