#pragma once

#include <QObject>

#include <chrono>
#include <optional>

/// The ticks of the timer service: points of a fixed grid in time, 1 ms apart and numbered. They
/// pass without anybody being woken; the program is woken only at a tick that it asked for.
class TickTimer : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    static constexpr std::chrono::milliseconds interval{1};

    /// The number of the tick that has passed last. The ticks also pass while the timer is off.
    virtual qint64 now() const = 0;

    /// Switching it off cancels the wake-up that was asked for. It wakes the program once more at
    /// most, and then without a signal.
    void setEnabled(bool enabled);
    bool isEnabled() const { return m_enabled; }
    /// Asks for one `wake` when `tick` has passed, in place of the one asked for before; as soon as
    /// events run if it has passed already. Does nothing while the timer is off.
    void wakeAt(qint64 tick);
    /// Cancels the wake-up that was asked for.
    void sleep();

signals:
    void wake();

protected:
    /// Makes the system call `expired` when `tick` has passed.
    virtual void arm(qint64 tick) = 0;
    virtual void disarm() = 0;
    /// Emits `wake` if it is due. False when no wake-up was asked for.
    bool expired();

private:
    bool m_enabled = false;
    std::optional<qint64> m_wakeAt;
};
